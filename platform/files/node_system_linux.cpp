#include "platform/files/node_system.h"

#include "platform/files/retried.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstring>
#include <fcntl.h>
#include <linux/magic.h>
#include <linux/openat2.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <sys/xattr.h>
#include <unistd.h>

// Later than the headers of the oldest distribution this is built on.
#ifndef AT_HANDLE_FID
#define AT_HANDLE_FID 0x200
#endif
#ifndef AT_HANDLE_CONNECTABLE
#define AT_HANDLE_CONNECTABLE 0x002
#endif

namespace platform {

namespace {

constexpr std::int64_t kNanoseconds = 1'000'000'000;

FileKind kindOf(mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFREG:
        return FileKind::File;
    case S_IFDIR:
        return FileKind::Folder;
    case S_IFLNK:
        return FileKind::Link;
    default:
        return FileKind::Other;
    }
}

std::int64_t nanoseconds(const statx_timestamp& time)
{
    return time.tv_sec * kNanoseconds + time.tv_nsec;
}

NodeSystem::Volume volumeOf(const struct statfs& info)
{
    NodeSystem::Volume volume;
    static_assert(sizeof info.f_fsid == sizeof volume.id);
    std::memcpy(&volume.id, &info.f_fsid, sizeof volume.id);
    volume.type = static_cast<std::uint64_t>(info.f_type);
    volume.isLayered = info.f_type == OVERLAYFS_SUPER_MAGIC;
    return volume;
}

/// Room for the header of the kernel's structure and the longest handle.
union HandleBuffer {
    file_handle header;
    std::byte room[sizeof(file_handle) + MAX_HANDLE_SZ];
};

class RunningSystem final : public NodeSystem {
public:
    int open(int folder, const char* name) override
    {
        return retried([=] { return openat(folder, name, O_PATH | O_NOFOLLOW | O_CLOEXEC); });
    }
    int openReal(const char* path) override
    {
        open_how how {};
        how.flags = O_PATH | O_NOFOLLOW | O_CLOEXEC;
        how.resolve = RESOLVE_NO_SYMLINKS;
        return static_cast<int>(
            retried([&] { return syscall(SYS_openat2, AT_FDCWD, path, &how, sizeof how); }));
    }
    int openTarget(const char* path) override
    {
        return retried([=] { return ::open(path, O_PATH | O_CLOEXEC); });
    }
    int openFolder(int folder, const char* name) override
    {
        const char* const entry = *name ? name : ".";
        return retried(
            [=] { return openat(folder, entry, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC); });
    }
    int openByHandle(int mount, const FileHandle& handle) override
    {
        HandleBuffer buffer {};
        buffer.header.handle_bytes = static_cast<unsigned>(handle.bytes().size());
        buffer.header.handle_type = handle.type();
        std::memcpy(buffer.room + sizeof(file_handle), handle.bytes().data(), handle.bytes().size());
        return retried([&] { return open_by_handle_at(mount, &buffer.header, O_PATH | O_CLOEXEC); });
    }
    void close(int descriptor) override { ::close(descriptor); }

    int attributes(int folder, const char* name, FileAttributes& attributes) override
    {
        struct statx found;
        const int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | itselfFlag(folder, name);
        const unsigned wanted =
            STATX_TYPE | STATX_INO | STATX_NLINK | STATX_SIZE | STATX_MTIME | STATX_BTIME | STATX_MNT_ID;
        const int result = retried([&] { return statx(folder, name, flags, wanted, &found); });
        if (result < 0)
            return result;
        attributes.device = makedev(found.stx_dev_major, found.stx_dev_minor);
        attributes.inode = found.stx_ino;
        attributes.born =
            found.stx_mask & STATX_BTIME ? nanoseconds(found.stx_btime) : FileAttributes::kUnknownTime;
        attributes.modified = nanoseconds(found.stx_mtime);
        attributes.size = found.stx_size;
        attributes.mount = found.stx_mnt_id;
        attributes.links = found.stx_nlink;
        attributes.kind = kindOf(found.stx_mode);
        return 0;
    }
    int handle(int folder, const char* name, HandlePurpose purpose, FileHandle& handle) override
    {
        const int flags = itselfFlag(folder, name);
        const int special = purpose == HandlePurpose::Telling ? AT_HANDLE_FID : AT_HANDLE_CONNECTABLE;
        auto& isKnown = purpose == HandlePurpose::Telling ? mKnowsTelling : mKnowsFinding;
        if (isKnown.load(std::memory_order_relaxed)) {
            const int result = namedHandle(folder, name, flags | special, handle);
            if (result == 0 || (result != -EINVAL && result != -EOPNOTSUPP))
                return result;
            if (result == -EINVAL) // an older kernel; what it gives without the flag is the same or less
                isKnown.store(false, std::memory_order_relaxed);
        }
        return namedHandle(folder, name, flags, handle);
    }
    int volume(int descriptor, Volume& volume) override
    {
        struct statfs info;
        const int result = retried([&] { return fstatfs(descriptor, &info); });
        if (result == 0)
            volume = volumeOf(info);
        return result;
    }
    int volumeAt(const char* path, Volume& volume) override
    {
        struct statfs info;
        const int result = retried([&] { return statfs(path, &info); });
        if (result == 0)
            volume = volumeOf(info);
        return result;
    }
    int pathOf(int descriptor, std::string& path) override
    {
        char link[32];
        char* end =
            std::to_chars(std::copy_n("/proc/self/fd/", 14, link), std::end(link) - 1, descriptor).ptr;
        *end = 0;
        return linkTarget(AT_FDCWD, link, path);
    }
    int readLink(int link, std::string& target) override { return linkTarget(link, "", target); }
    std::ptrdiff_t list(int folder, std::span<std::byte> buffer) override
    {
        return retried([&] { return syscall(SYS_getdents64, folder, buffer.data(), buffer.size()); });
    }

    int renameWithoutReplacing(int folder, const char* from, const char* to) override
    {
        return retried([=] { return renameat2(folder, from, folder, to, RENAME_NOREPLACE); });
    }
    int createFile(int folder, const char* name) override
    {
        const int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
        const int made = retried([=] { return openat(folder, name, flags, 0666); });
        if (made >= 0)
            ::close(made);
        return made < 0 ? made : 0;
    }
    int createFolder(int folder, const char* name) override
    {
        return retried([=] { return mkdirat(folder, name, 0777); });
    }

    std::ptrdiff_t readAttribute(const char* path, const char* name, std::span<std::byte> value) override
    {
        return retried([=] { return getxattr(path, name, value.data(), value.size()); });
    }
    int writeAttribute(const char* path, const char* name, std::span<const std::byte> value) override
    {
        return retried([=] { return setxattr(path, name, value.data(), value.size(), 0); });
    }
    int removeAttribute(const char* path, const char* name) override
    {
        return retried([=] { return removexattr(path, name); });
    }

    std::size_t descriptorLimit() override
    {
        rlimit limit {};
        return getrlimit(RLIMIT_NOFILE, &limit) == 0 ? limit.rlim_cur : 0;
    }

private:
    /// An empty name without a folder is no name, and not the current folder.
    static int itselfFlag(int folder, const char* name)
    {
        return *name || folder == kNoFolder ? 0 : AT_EMPTY_PATH;
    }
    static int namedHandle(int folder, const char* name, int flags, FileHandle& handle)
    {
        HandleBuffer buffer;
        buffer.header.handle_bytes = MAX_HANDLE_SZ;
        int mount = 0;
        const int result =
            retried([&] { return name_to_handle_at(folder, name, &buffer.header, &mount, flags); });
        if (result == 0)
            handle = FileHandle(
                buffer.header.handle_type, { buffer.room + sizeof(file_handle), buffer.header.handle_bytes });
        return result;
    }
    static int linkTarget(int folder, const char* name, std::string& target)
    {
        char text[PATH_MAX];
        const ssize_t length = retried([&] { return readlinkat(folder, name, text, sizeof text); });
        if (length < 0)
            return static_cast<int>(length);
        if (length == sizeof text)
            return -ENAMETOOLONG;
        target.assign(text, static_cast<std::size_t>(length));
        return 0;
    }
    std::atomic<bool> mKnowsTelling { true };
    std::atomic<bool> mKnowsFinding { true };
};

std::atomic<NodeSystem*> gCurrent { nullptr };

}

NodeSystem& NodeSystem::running()
{
    static NodeSystem& only = *new RunningSystem; // never destroyed: references may end after everything
    return only;
}

NodeSystem& NodeSystem::current()
{
    NodeSystem* replaced = gCurrent.load(std::memory_order_acquire);
    return replaced ? *replaced : running();
}

NodeSystem& NodeSystem::replaceCurrent(NodeSystem& system)
{
    NodeSystem* before = gCurrent.exchange(&system);
    return before ? *before : running();
}

}
