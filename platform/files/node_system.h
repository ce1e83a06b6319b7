#pragma once

#include "platform/files/file_identity.h"

#include <string>

namespace platform {

/// The system calls under file references, one function each, so that tests can let any of them fail.
///
/// Results below zero are negated errno values; an interrupted call goes on by itself. `folder` is a
/// descriptor that `name` is relative to, or kNoFolder; an empty name stands for the descriptor itself.
/// Symbolic links at the end of a name are not followed unless a function says so. Threads: any.
class NodeSystem {
public:
    static constexpr int kNoFolder = -100;

    using Volume = VolumeAttributes;
    /// A handle that tells an object apart, or one by which openByHandle() finds it with its path.
    enum class HandlePurpose { Telling, Finding };

    /// The running system. Lives as long as the process.
    static NodeSystem& running();
    /// What references use: running(), unless a test has put another in its place.
    static NodeSystem& current();
    /// Puts another in its place, and answers the one before.
    static NodeSystem& replaceCurrent(NodeSystem& system);

    NodeSystem() = default;
    virtual ~NodeSystem() = default;
    NodeSystem(const NodeSystem&) = delete;
    NodeSystem& operator=(const NodeSystem&) = delete;

    /// A descriptor that only stands for the object.
    virtual int open(int folder, const char* name) = 0;
    /// The same through no symbolic link at all, so that an absolute `path` is the real one; -ELOOP when
    /// there is one, -ENOSYS where the system cannot tell.
    virtual int openReal(const char* path) = 0;
    /// The same for what links at the end of `path` lead to.
    virtual int openTarget(const char* path) = 0;
    virtual int openFolder(int folder, const char* name) = 0; ///< For list().
    /// `mount` is a folder from openFolder() on the same volume. Needs the right to pass any folder.
    virtual int openByHandle(int mount, const FileHandle& handle) = 0;
    virtual void close(int descriptor) = 0;

    virtual int attributes(int folder, const char* name, FileAttributes& attributes) = 0;
    virtual int handle(int folder, const char* name, HandlePurpose purpose, FileHandle& handle) = 0;
    virtual int volume(int descriptor, Volume& volume) = 0;
    virtual int volumeAt(const char* path, Volume& volume) = 0; ///< Follows links.
    /// Where the object of a descriptor is, as far as the system knows. Only a hint: check it.
    virtual int pathOf(int descriptor, std::string& path) = 0;
    virtual int readLink(int link, std::string& target) = 0;
    /// The next entries of a folder, as decodeFolderEntries() reads them; how many bytes, 0 at the end.
    virtual std::ptrdiff_t list(int folder, std::span<std::byte> buffer) = 0;

    /// -EINVAL or -ENOSYS where that cannot be asked for.
    virtual int renameWithoutReplacing(int folder, const char* from, const char* to) = 0;
    virtual int createFile(int folder, const char* name) = 0; ///< -EEXIST when something is there.
    virtual int createFolder(int folder, const char* name) = 0;

    /// Extended attributes; these follow links. The length of the value.
    virtual std::ptrdiff_t readAttribute(const char* path, const char* name, std::span<std::byte> value) = 0;
    virtual int writeAttribute(const char* path, const char* name, std::span<const std::byte> value) = 0;
    virtual int removeAttribute(const char* path, const char* name) = 0;

    virtual std::size_t descriptorLimit() = 0; ///< How many descriptors the process may have.
};

}
