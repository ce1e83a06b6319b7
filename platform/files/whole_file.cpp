#include "platform/files/whole_file.h"

#include "platform/files/hidden_name.h"
#include "platform/files/open_file.h"
#include "platform/files/write_all.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <utility>

namespace platform {

namespace {

constexpr int kMaxLinks = 40; // as many as the kernel follows
constexpr std::size_t kSmallestRead = 16 * 1024;
constexpr int kAttempts = 100;

std::string folderOf(const std::string& path)
{
    std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, std::max<std::size_t>(slash, 1));
}

std::string besides(const std::string& path, const std::string& name)
{
    std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? name : path.substr(0, slash + 1) + name;
}

/// Where a path leads once its last component is no link any more. The end need not exist.
int followLinks(FileSystem& files, std::string& path, FileSystem::Status& status)
{
    for (int links = 0; links <= kMaxLinks; ++links) {
        int result = files.status(path, status);
        if (result != 0 || status.kind != FileSystem::Status::Link)
            return result;
        std::string target;
        if (int problem = files.readLink(path, target); problem != 0)
            return problem;
        path = target.starts_with('/') ? target : besides(path, target);
    }
    return -ELOOP;
}

std::string nameOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1); // all of it without a slash
}

/// Owner before permissions, since a new owner drops some. Without the right to give a file away the new one
/// is the writer's; then bits that act in the name of an owner or group must not come along.
int takeOver(FileSystem& files, int file, const FileSystem::Status& replaced)
{
    FileSystem::Status made;
    if (int problem = files.status(file, made); problem != 0)
        return problem;
    mode_t permissions = replaced.permissions;
    if (made.owner != replaced.owner || made.group != replaced.group) {
        int problem = files.setOwner(file, replaced.owner, replaced.group);
        if (problem == -EPERM)
            permissions &= 01777;
        else if (problem != 0)
            return problem;
    }
    return files.setPermissions(file, permissions);
}

int createHidden(FileSystem& files, const std::string& path, mode_t permissions, std::string& hidden)
{
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        hidden = besides(path, hiddenNameFor(nameOf(path)));
        int file = files.create(hidden, permissions);
        if (file != -EEXIST)
            return file;
    }
    return -EEXIST;
}

int writeHidden(
    FileSystem& files, int created, const FileSystem::Status* replaced, std::span<const std::byte> bytes)
{
    OpenFile<FileSystem> file(files, created);
    if (int problem = writeAll(files, file.get(), bytes); problem != 0)
        return problem;
    if (int problem = replaced ? takeOver(files, file.get(), *replaced) : 0; problem != 0)
        return problem;
    if (int problem = files.sync(file.get()); problem != 0)
        return problem;
    return file.close();
}

int syncFolder(FileSystem& files, const std::string& path)
{
    int opened = files.openFolder(path);
    // A folder that may be changed but not read cannot be synced; the content is whole either way.
    if (opened < 0)
        return opened == -EACCES ? 0 : opened;
    OpenFile<FileSystem> folder(files, opened);
    int problem = files.sync(folder.get());
    return problem == -EINVAL ? 0 : problem; // a file system without such a notion
}

/// Room for the file, and for one more byte that tells whether its end is reached.
bool grow(FileContent& content, std::size_t capacity)
{
    auto* larger = static_cast<std::byte*>(std::realloc(content.bytes.get(), capacity));
    if (!larger)
        return false;
    (void)content.bytes.release();
    content.bytes.reset(larger);
    return true;
}

}

int readFile(FileSystem& files, const std::string& path, FileContent& content, const ReadRules& rules)
{
    int opened = files.openForReading(path, rules.link);
    if (opened < 0)
        return opened;
    OpenFile<FileSystem> file(files, opened);
    FileSystem::Status status;
    if (int problem = files.status(file.get(), status); problem != 0)
        return problem;
    if (status.kind == FileSystem::Status::Folder)
        return -EISDIR;
    if (status.size > rules.largest)
        return -EFBIG;
    // The size is a hint only: it is 0 for files the kernel makes up, and a file may change.
    if (status.size >= PTRDIFF_MAX)
        return -ENOMEM;
    std::size_t capacity = std::max<std::size_t>(static_cast<std::size_t>(status.size) + 1, kSmallestRead);
    FileContent read;
    if (!grow(read, capacity))
        return -ENOMEM;
    for (;;) {
        if (read.length == capacity) {
            if (capacity > PTRDIFF_MAX / 2 || !grow(read, capacity * 2))
                return -ENOMEM;
            capacity *= 2;
        }
        ssize_t count = files.read(file.get(), { read.bytes.get() + read.length, capacity - read.length });
        if (count < 0)
            return static_cast<int>(count);
        if (count == 0)
            break;
        read.length += static_cast<std::size_t>(count);
        if (read.length > rules.largest)
            return -EFBIG;
    }
    (void)grow(read, std::max<std::size_t>(read.length, 1)); // gives back what is too much
    content = std::move(read);
    return 0;
}

int replaceFile(FileSystem& files, const std::string& given, std::span<const std::byte> bytes, LastLink link)
{
    std::string path = given;
    FileSystem::Status replaced;
    int found =
        link == LastLink::Followed ? followLinks(files, path, replaced) : files.status(path, replaced);
    if (found != 0 && found != -ENOENT)
        return found;
    if (found == 0 && replaced.kind != FileSystem::Status::File)
        return replaced.kind == FileSystem::Status::Folder ? -EISDIR
            : replaced.kind == FileSystem::Status::Link    ? -ELOOP
                                                           : -EINVAL;
    std::string hidden;
    int created = createHidden(files, path, found == 0 ? 0600 : 0666, hidden);
    if (created < 0)
        return created;
    int problem = writeHidden(files, created, found == 0 ? &replaced : nullptr, bytes);
    if (problem == 0)
        problem = files.rename(hidden, path);
    if (problem != 0) {
        (void)files.unlink(hidden);
        return problem;
    }
    return syncFolder(files, folderOf(path));
}

int overwriteFile(FileSystem& files, const std::string& path, std::span<const std::byte> bytes)
{
    int opened = files.openForWriting(path);
    if (opened < 0)
        return opened;
    OpenFile<FileSystem> file(files, opened);
    if (int problem = writeAll(files, file.get(), bytes); problem != 0)
        return problem;
    return file.close();
}

}
