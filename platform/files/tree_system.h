#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <optional>
#include <span>
#include <string>
#include <sys/types.h>
#include <vector>

namespace platform {

/// What work on trees of files asks of the system; tests put faults in.
///
/// Everything is told by an open folder and a name in it, so that whoever renames folders meanwhile leads
/// nothing elsewhere, and no name is followed if it is a symbolic link. Every operation answers a negative
/// errno on failure, and goes on by itself after an interruption.
class TreeSystem {
public:
    /// Tells a file from all others while it exists.
    struct Identity {
        dev_t device = 0;
        ino_t inode = 0;
        bool operator==(const Identity&) const = default;
    };
    struct Status {
        mode_t mode = 0; ///< Kind and permissions.
        Identity identity;
        dev_t special = 0; ///< Which device, of a device.
        uid_t owner = 0;
        gid_t group = 0;
        nlink_t links = 0;
        std::uint64_t size = 0;
        std::uint64_t allocated = 0; ///< How many bytes have a place on the disk; fewer when there are holes.
        timespec accessed = {};
        timespec modified = {};

        bool isFolder() const;
        bool isLink() const;
        bool isFile() const;
    };
    struct Details : Status {
        std::uint64_t volume = 0; ///< The file system's id, the same for all files on it.
        std::optional<timespec> born;
    };

    struct Entry {
        std::string name;
        bool mayBeFolder = false; ///< False means that it is none.
    };

    static TreeSystem& real();
    virtual ~TreeSystem() = default;

    /// A folder by its path, through links, to tell names in; it need not be readable. The descriptor.
    virtual int openAround(const std::string& path) = 0;
    virtual int openFolderAt(const std::string& path) = 0; ///< By its path, through links.
    virtual int openFolder(int in, const std::string& name) = 0;
    virtual int openFile(int in, const std::string& name) = 0; ///< For reading.
    virtual int close(int file) = 0;

    virtual int status(int in, const std::string& name, Status& status) = 0;
    virtual int status(int file, Status& status) = 0;
    virtual int details(int in, const std::string& name, Details& details) = 0;
    virtual int entries(int folder, std::vector<Entry>& entries) = 0; ///< Without "." and "..".
    virtual int readLink(int in, const std::string& name, std::string& target) = 0;

    // These fail with EEXIST when anything is there.
    virtual int createFile(int in, const std::string& name) = 0; ///< For writing, by its owner alone.
    virtual int makeFolder(int in, const std::string& name) = 0; ///< For its owner alone.
    virtual int makeLink(const std::string& target, int in, const std::string& name) = 0;
    virtual int makeSpecial(int in, const std::string& name, mode_t mode, dev_t special) = 0;
    virtual int link(int in, const std::string& name, int to, const std::string& newName) = 0;
    virtual int renameNew(int in, const std::string& name, int to, const std::string& newName) = 0;

    /// Replaces what is there.
    virtual int rename(int in, const std::string& name, int to, const std::string& newName) = 0;
    virtual int mayChange(int folder) = 0; ///< Whether names in it may be made and removed: 0, EACCES, EROFS.
    virtual int removeFile(int in, const std::string& name) = 0; ///< EISDIR for a folder.
    virtual int removeFolder(int in, const std::string& name) = 0; ///< An empty one.

    /// Where data, or a hole, next is at or after an offset; ENXIO beyond the last data, EINVAL where the
    /// file system does not tell.
    virtual std::int64_t nextData(int file, std::int64_t from) = 0;
    virtual std::int64_t nextHole(int file, std::int64_t from) = 0;
    virtual int moveTo(int file, std::int64_t at) = 0; ///< Where it is read and written next.
    virtual int setSize(int file, std::uint64_t size) = 0;
    /// Copies up to `size` bytes inside the system; 0 at the end.
    virtual ssize_t copyRange(int from, int to, std::size_t size) = 0;
    virtual ssize_t read(int file, std::span<std::byte> bytes) = 0;
    virtual ssize_t write(int file, std::span<const std::byte> bytes) = 0;

    virtual int extendedNames(int file, std::vector<std::string>& names) = 0;
    virtual int extended(int file, const std::string& name, std::vector<std::byte>& value) = 0;
    virtual int setExtended(int file, const std::string& name, std::span<const std::byte> value) = 0;
    virtual int setOwner(int file, uid_t owner, gid_t group) = 0;
    virtual int setOwner(int in, const std::string& name, uid_t owner, gid_t group) = 0;
    virtual int setPermissions(int file, mode_t permissions) = 0;
    virtual int setTimes(int file, const timespec& accessed, const timespec& modified) = 0;
    virtual int setTimes(
        int in, const std::string& name, const timespec& accessed, const timespec& modified) = 0;
    /// Of a path, through links, as are the three that follow.
    virtual int statusAt(const std::string& path, Status& status) = 0;
    virtual int setOwnerAt(
        const std::string& path, uid_t owner, gid_t group) = 0; ///< -1 leaves one as it is.
    virtual int setPermissionsAt(const std::string& path, mode_t permissions) = 0;
    virtual int setModifiedAt(const std::string& path, const timespec& modified) = 0;

    virtual int sync(int file) = 0; ///< All of its file system, until it is on the disk.
};

}
