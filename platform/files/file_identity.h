#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace platform {

enum class FileKind : std::uint8_t { File = 1, Folder = 2, Link = 3, Other = 4 };

/// The kernel's own name for an object of a file system: on most of them its inode number and a generation,
/// which tells it from another object that got the number later.
class FileHandle {
public:
    /// The longest known: of a layered file system above btrfs.
    static constexpr std::size_t kMaxLength = 44;

    FileHandle() = default; ///< None: the file system gives none, or nobody has asked it.
    /// None as well when there are more bytes than a handle keeps.
    FileHandle(std::int32_t type, std::span<const std::byte> bytes);

    explicit operator bool() const { return mLength != 0; }
    std::int32_t type() const { return mType; }
    std::span<const std::byte> bytes() const { return { mBytes.data(), mLength }; }
    bool operator==(const FileHandle&) const = default;

private:
    std::int32_t mType = 0;
    std::uint8_t mLength = 0;
    std::array<std::byte, kMaxLength> mBytes {};
};

/// What one look at an object tells.
struct FileAttributes {
    static constexpr std::int64_t kUnknownTime = INT64_MIN;

    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t born = kUnknownTime; ///< Nanoseconds since 1970, as all times here.
    std::int64_t modified = 0;
    std::uint64_t size = 0;
    std::uint64_t mount = 0;
    std::uint32_t links = 0;
    FileKind kind = FileKind::Other;
};

/// What one look at a file system tells.
struct VolumeAttributes {
    std::uint64_t id = 0; ///< The file system's own number. Device numbers differ within some volumes.
    std::uint64_t type = 0;
    /// An object gets another time of birth when it is first written to, and copied up to another layer for
    /// that. What stays is the handle.
    bool isLayered = false;
};

/// What tells an object from every other, wherever it is moved on its volume.
struct FileIdentity {
    std::uint64_t volume = 0; ///< Its number.
    std::uint64_t device = 0; ///< 0: not known, as after a restart of the machine.
    std::uint64_t inode = 0;
    std::int64_t born = FileAttributes::kUnknownTime;
    FileKind kind = FileKind::Other;
    bool isLayered = false; ///< The volume is.
    FileHandle handle;

    FileIdentity() = default;
    FileIdentity(const VolumeAttributes& on, const FileAttributes& attributes, const FileHandle& named);
};

/// Whether the attributes can be those of the object. Exact as long as something holds the object open;
/// otherwise its inode may have gone to another one, which the time of birth nearly always tells, but not on
/// layered file systems.
bool isSame(const FileIdentity& identity, const FileAttributes& attributes);

/// The same with a handle as well, which settles it if the object's own is known.
bool isSame(const FileIdentity& identity, const FileAttributes& attributes, const FileHandle& handle);

/// Whether both are the same object. A part that one of them lacks is no evidence. On layered file systems
/// the time of birth counts only where a handle is missing: an object is rather lost than taken for another.
bool isSame(const FileIdentity& a, const FileIdentity& b);

}
