#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <sys/types.h>

namespace platform {

/// What is done about a symbolic link that is the last name of a path. A refused one fails with ELOOP.
enum class LastLink { Followed, Refused };

/// What reading and writing whole files asks of the system; tests put faults in.
///
/// Every operation answers a negative errno on failure, and goes on by itself after an interruption.
class FileSystem {
public:
    struct Status {
        enum Kind { File, Folder, Link, Other } kind = Other;
        std::uint64_t size = 0;
        mode_t permissions = 0;
        uid_t owner = 0;
        gid_t group = 0;
    };

    static FileSystem& real();
    virtual ~FileSystem() = default;

    virtual int status(const std::string& path, Status& status) = 0; ///< Of a link itself.
    virtual int status(int file, Status& status) = 0;
    virtual int readLink(const std::string& path, std::string& target) = 0;

    virtual int openForReading(const std::string& path, LastLink link) = 0; ///< The descriptor.
    virtual int openFolder(const std::string& path) = 0;
    virtual int create(const std::string& path, mode_t permissions) = 0; ///< Fails when something is there.
    virtual int openForWriting(const std::string& path) = 0; ///< Emptied, or made.
    virtual ssize_t read(int file, std::span<std::byte> bytes) = 0;
    virtual ssize_t write(int file, std::span<const std::byte> bytes) = 0;
    virtual int setOwner(int file, uid_t owner, gid_t group) = 0;
    virtual int setPermissions(int file, mode_t permissions) = 0;
    virtual int sync(int file) = 0; ///< Until it is on the disk.
    virtual int close(int file) = 0;

    virtual int rename(const std::string& from, const std::string& to) = 0;
    virtual int unlink(const std::string& path) = 0;
};

}
