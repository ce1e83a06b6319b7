#include "platform/files/tree_system.h"

#include "platform/files/descriptor.h"
#include "platform/files/retried.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/sysmacros.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace platform {

namespace {

void convert(const struct stat& from, TreeSystem::Status& to)
{
    to.mode = from.st_mode;
    to.identity = { from.st_dev, from.st_ino };
    to.special = from.st_rdev;
    to.owner = from.st_uid;
    to.group = from.st_gid;
    to.links = from.st_nlink;
    to.size = static_cast<std::uint64_t>(from.st_size);
    to.allocated = static_cast<std::uint64_t>(from.st_blocks) * 512; // whatever the block size
    to.accessed = from.st_atim;
    to.modified = from.st_mtim;
}

timespec timeOf(const statx_timestamp& from)
{
    return { from.tv_sec, from.tv_nsec };
}

void convert(const struct statx& from, TreeSystem::Details& to)
{
    to.mode = from.stx_mode;
    to.identity = { makedev(from.stx_dev_major, from.stx_dev_minor), from.stx_ino };
    to.special = makedev(from.stx_rdev_major, from.stx_rdev_minor);
    to.owner = from.stx_uid;
    to.group = from.stx_gid;
    to.links = from.stx_nlink;
    to.size = from.stx_size;
    to.allocated = from.stx_blocks * 512;
    to.accessed = timeOf(from.stx_atime);
    to.modified = timeOf(from.stx_mtime);
    if (from.stx_mask & STATX_BTIME)
        to.born = timeOf(from.stx_btime);
}

/// The two numbers of a file system's id as one; its device number where it has no id.
std::uint64_t volumeOf(const struct statfs& volume, dev_t device)
{
    const auto* id = volume.f_fsid.__val;
    const std::uint64_t both = static_cast<std::uint64_t>(static_cast<std::uint32_t>(id[0])) << 32
        | static_cast<std::uint32_t>(id[1]);
    return both != 0 ? both : device;
}

/// Calls for a text or value of unknown length until the buffer holds it.
template<typename Buffer, typename Call> int filled(Buffer& buffer, Call call)
{
    for (std::size_t size = 256;; size *= 2) {
        buffer.resize(size);
        const auto length = retried([&] { return call(buffer); });
        if (length == -ERANGE && size < std::size_t { 1 } << 24)
            continue;
        buffer.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
        return length < 0 ? static_cast<int>(length) : 0;
    }
}

struct alignas(dirent64) EntryBytes {
    char bytes[64 * 1024];
};

class RealTreeSystem : public TreeSystem {
public:
    int openAround(const std::string& path) override { return opened(AT_FDCWD, path, O_PATH | O_DIRECTORY); }
    int openFolderAt(const std::string& path) override
    {
        return opened(AT_FDCWD, path, O_RDONLY | O_DIRECTORY);
    }
    int openFolder(int in, const std::string& name) override
    {
        return opened(in, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    }
    int openFile(int in, const std::string& name) override
    {
        return opened(in, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    }
    int close(int file) override
    {
        // Linux has closed the descriptor even when it tells of an interruption.
        return ::close(file) == 0 || errno == EINTR ? 0 : -errno;
    }

    int status(int in, const std::string& name, Status& status) override
    {
        struct stat found = {};
        const int result = retried([&] { return fstatat(in, name.c_str(), &found, AT_SYMLINK_NOFOLLOW); });
        if (result == 0)
            convert(found, status);
        return result;
    }
    int status(int file, Status& status) override
    {
        struct stat found = {};
        const int result = retried([&] { return fstat(file, &found); });
        if (result == 0)
            convert(found, status);
        return result;
    }
    int details(int in, const std::string& name, Details& details) override
    {
        const int file = opened(in, name, O_PATH | O_NOFOLLOW);
        if (file < 0)
            return file;
        const Descriptor closing(file);
        struct statx found = {};
        struct statfs volume = {};
        constexpr unsigned kWanted = STATX_BASIC_STATS | STATX_BTIME;
        int result = retried([&] { return statx(file, "", AT_EMPTY_PATH, kWanted, &found); });
        if (result == 0)
            result = retried([&] { return fstatfs(file, &volume); });
        if (result != 0)
            return result;
        convert(found, details);
        details.volume = volumeOf(volume, details.identity.device);
        return 0;
    }
    int entries(int folder, std::vector<Entry>& entries) override
    {
        if (lseek(folder, 0, SEEK_SET) < 0)
            return -errno;
        const auto buffer = std::make_unique<EntryBytes>();
        for (;;) {
            const auto length = retried([&] { return getdents64(folder, buffer->bytes, sizeof *buffer); });
            if (length <= 0)
                return static_cast<int>(length);
            for (ssize_t at = 0; at < length;) {
                const auto* entry = reinterpret_cast<const dirent64*>(buffer->bytes + at);
                const std::string_view name = entry->d_name;
                if (name != "." && name != "..")
                    entries.push_back(
                        { std::string(name), entry->d_type == DT_DIR || entry->d_type == DT_UNKNOWN });
                at += entry->d_reclen;
            }
        }
    }
    int readLink(int in, const std::string& name, std::string& target) override
    {
        char text[PATH_MAX];
        const auto length = retried([&] { return readlinkat(in, name.c_str(), text, sizeof text); });
        if (length < 0)
            return static_cast<int>(length);
        target.assign(text, static_cast<std::size_t>(length));
        return 0;
    }

    int createFile(int in, const std::string& name) override
    {
        return opened(in, name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
    }
    int makeFolder(int in, const std::string& name) override
    {
        return retried([&] { return mkdirat(in, name.c_str(), 0700); });
    }
    int makeLink(const std::string& target, int in, const std::string& name) override
    {
        return retried([&] { return symlinkat(target.c_str(), in, name.c_str()); });
    }
    int makeSpecial(int in, const std::string& name, mode_t mode, dev_t special) override
    {
        return retried([&] { return mknodat(in, name.c_str(), mode, special); });
    }
    int link(int in, const std::string& name, int to, const std::string& newName) override
    {
        return retried([&] { return linkat(in, name.c_str(), to, newName.c_str(), 0); });
    }
    int renameNew(int in, const std::string& name, int to, const std::string& newName) override
    {
        return retried([&] { return renameat2(in, name.c_str(), to, newName.c_str(), RENAME_NOREPLACE); });
    }
    int rename(int in, const std::string& name, int to, const std::string& newName) override
    {
        return retried([&] { return renameat(in, name.c_str(), to, newName.c_str()); });
    }
    int mayChange(int folder) override
    {
        return retried([&] { return faccessat(folder, ".", W_OK | X_OK, AT_EACCESS); });
    }
    int removeFile(int in, const std::string& name) override
    {
        return retried([&] { return unlinkat(in, name.c_str(), 0); });
    }
    int removeFolder(int in, const std::string& name) override
    {
        return retried([&] { return unlinkat(in, name.c_str(), AT_REMOVEDIR); });
    }

    std::int64_t nextData(int file, std::int64_t from) override
    {
        return retried([&] { return lseek(file, from, SEEK_DATA); });
    }
    std::int64_t nextHole(int file, std::int64_t from) override
    {
        return retried([&] { return lseek(file, from, SEEK_HOLE); });
    }
    int moveTo(int file, std::int64_t at) override
    {
        return static_cast<int>(
            std::min<std::int64_t>(retried([&] { return lseek(file, at, SEEK_SET); }), 0));
    }
    int setSize(int file, std::uint64_t size) override
    {
        return retried([&] { return ftruncate(file, static_cast<off_t>(size)); });
    }
    ssize_t copyRange(int from, int to, std::size_t size) override
    {
        return retried([&] { return copy_file_range(from, nullptr, to, nullptr, size, 0); });
    }
    ssize_t read(int file, std::span<std::byte> bytes) override
    {
        return retried([&] { return ::read(file, bytes.data(), bytes.size()); });
    }
    ssize_t write(int file, std::span<const std::byte> bytes) override
    {
        return retried([&] { return ::write(file, bytes.data(), bytes.size()); });
    }

    int extendedNames(int file, std::vector<std::string>& names) override
    {
        std::string all;
        const int result =
            filled(all, [&](std::string& to) { return flistxattr(file, to.data(), to.size()); });
        for (std::size_t at = 0; at < all.size();) {
            names.emplace_back(all.c_str() + at);
            at += names.back().size() + 1;
        }
        return result;
    }
    int extended(int file, const std::string& name, std::vector<std::byte>& value) override
    {
        return filled(value, [&](auto& to) { return fgetxattr(file, name.c_str(), to.data(), to.size()); });
    }
    int setExtended(int file, const std::string& name, std::span<const std::byte> value) override
    {
        return retried([&] { return fsetxattr(file, name.c_str(), value.data(), value.size(), 0); });
    }
    int setOwner(int file, uid_t owner, gid_t group) override
    {
        return retried([&] { return fchown(file, owner, group); });
    }
    int setOwner(int in, const std::string& name, uid_t owner, gid_t group) override
    {
        return retried([&] { return fchownat(in, name.c_str(), owner, group, AT_SYMLINK_NOFOLLOW); });
    }
    int setPermissions(int file, mode_t permissions) override
    {
        return retried([&] { return fchmod(file, permissions); });
    }
    int setTimes(int file, const timespec& accessed, const timespec& modified) override
    {
        const timespec times[] = { accessed, modified };
        return retried([&] { return futimens(file, times); });
    }
    int setTimes(int in, const std::string& name, const timespec& accessed, const timespec& modified) override
    {
        const timespec times[] = { accessed, modified };
        return retried([&] { return utimensat(in, name.c_str(), times, AT_SYMLINK_NOFOLLOW); });
    }
    int statusAt(const std::string& path, Status& status) override
    {
        struct stat found = {};
        const int result = retried([&] { return stat(path.c_str(), &found); });
        if (result == 0)
            convert(found, status);
        return result;
    }
    int setOwnerAt(const std::string& path, uid_t owner, gid_t group) override
    {
        return retried([&] { return chown(path.c_str(), owner, group); });
    }
    int setPermissionsAt(const std::string& path, mode_t permissions) override
    {
        return retried([&] { return chmod(path.c_str(), permissions); });
    }
    int setModifiedAt(const std::string& path, const timespec& modified) override
    {
        const timespec times[] = { { 0, UTIME_OMIT }, modified };
        return retried([&] { return utimensat(AT_FDCWD, path.c_str(), times, 0); });
    }
    int sync(int file) override
    {
        return retried([&] { return syncfs(file); });
    }

private:
    static int opened(int in, const std::string& name, int flags)
    {
        return retried([&] { return openat(in, name.c_str(), flags | O_CLOEXEC | O_NOCTTY, 0600); });
    }
};

}

bool TreeSystem::Status::isFolder() const
{
    return S_ISDIR(mode);
}

bool TreeSystem::Status::isLink() const
{
    return S_ISLNK(mode);
}

bool TreeSystem::Status::isFile() const
{
    return S_ISREG(mode);
}

TreeSystem& TreeSystem::real()
{
    static TreeSystem& only = *new RealTreeSystem; // never destroyed: files are moved until the very end
    return only;
}

}
