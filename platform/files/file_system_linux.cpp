#include "platform/files/file_system.h"

#include "platform/files/retried.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

void convert(const struct stat& from, FileSystem::Status& to)
{
    using Status = FileSystem::Status;
    to.kind = S_ISREG(from.st_mode) ? Status::File
        : S_ISDIR(from.st_mode)     ? Status::Folder
        : S_ISLNK(from.st_mode)     ? Status::Link
                                    : Status::Other;
    to.size = static_cast<std::uint64_t>(from.st_size);
    to.permissions = from.st_mode & 07777;
    to.owner = from.st_uid;
    to.group = from.st_gid;
}

class RealFileSystem : public FileSystem {
public:
    int status(const std::string& path, Status& status) override
    {
        struct stat found = {};
        int result = retried([&] { return lstat(path.c_str(), &found); });
        if (result == 0)
            convert(found, status);
        return result;
    }
    int status(int file, Status& status) override
    {
        struct stat found = {};
        int result = retried([&] { return fstat(file, &found); });
        if (result == 0)
            convert(found, status);
        return result;
    }
    int readLink(const std::string& path, std::string& target) override
    {
        char text[PATH_MAX];
        ssize_t length = retried([&] { return ::readlink(path.c_str(), text, sizeof text); });
        if (length < 0)
            return static_cast<int>(length);
        target.assign(text, static_cast<std::size_t>(length));
        return 0;
    }
    int openForReading(const std::string& path, LastLink link) override
    {
        return opened(path, O_RDONLY | O_NONBLOCK | (link == LastLink::Refused ? O_NOFOLLOW : 0));
    }
    int openFolder(const std::string& path) override { return opened(path, O_RDONLY | O_DIRECTORY); }
    int create(const std::string& path, mode_t permissions) override
    {
        return opened(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, permissions);
    }
    int openForWriting(const std::string& path) override
    {
        return opened(path, O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK, 0666);
    }
    ssize_t read(int file, std::span<std::byte> bytes) override
    {
        return retried([&] { return ::read(file, bytes.data(), bytes.size()); });
    }
    ssize_t write(int file, std::span<const std::byte> bytes) override
    {
        return retried([&] { return ::write(file, bytes.data(), bytes.size()); });
    }
    int setOwner(int file, uid_t owner, gid_t group) override
    {
        return retried([&] { return fchown(file, owner, group); });
    }
    int setPermissions(int file, mode_t permissions) override
    {
        return retried([&] { return fchmod(file, permissions); });
    }
    int sync(int file) override
    {
        return retried([&] { return fsync(file); });
    }
    int close(int file) override
    {
        // Linux has closed the descriptor even when it tells of an interruption.
        return ::close(file) == 0 || errno == EINTR ? 0 : -errno;
    }
    int rename(const std::string& from, const std::string& to) override
    {
        return retried([&] { return ::rename(from.c_str(), to.c_str()); });
    }
    int unlink(const std::string& path) override
    {
        return retried([&] { return ::unlink(path.c_str()); });
    }

private:
    static int opened(const std::string& path, int flags, mode_t permissions = 0)
    {
        return retried([&] { return ::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, permissions); });
    }
};

}

FileSystem& FileSystem::real()
{
    static FileSystem& only = *new RealFileSystem; // never destroyed: files are written until the very end
    return only;
}

}
