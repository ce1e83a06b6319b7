#pragma once

#include "LUMPlatform/NSError.h"

#include <string>
#include <utility>

namespace platform {
class NodeRef;
class ReferenceNode;
}

/// An opaque reference to one object of a file system: a file, a folder, a symbolic link.
///
/// It refers to the object and not to a path: it holds on through renames, moves on the volume, and renames
/// of any folder above, and never takes another object for it, whatever stands at the old path. A reference
/// made by default names nothing; calls that need an object answer -43 for it.
///
/// The object is held by a descriptor that only stands for it, as long as the process can spare one: a
/// quarter of its limit, 4,096 at most, those used last. Beyond that a reference remembers identity and path
/// of its object, and when that is not there any more looks around for it, for a limited time. On volumes
/// below /media, /run/media and /mnt no descriptors are kept, so that these can be unmounted at any time.
///
/// Copies share what they know, so copying is cheap. Threads: one reference is used by one thread at a time;
/// copies may live on different threads.
///
///     FSRef file;
///     if (FSPathMakeRef("/home/me/Take 1.aif", file) == 0) {
///         std::string path; // a week later
///         if (FSRefMakePath(file, path) == 0)
///             play(path);
///     }
class NS_EXPORT FSRef {
public:
    constexpr FSRef() = default;
    FSRef(const FSRef& other) : mNode(other.mNode) { retain(); }
    FSRef(FSRef&& other) noexcept : mNode(std::exchange(other.mNode, nullptr)) { }
    FSRef& operator=(FSRef other) noexcept
    {
        std::swap(mNode, other.mNode);
        return *this;
    }
    ~FSRef()
    {
        if (mNode)
            release();
    }

    /// Whether it refers to anything. The object may be gone all the same.
    explicit operator bool() const { return mNode != nullptr; }

    // For libLUMPlatform itself.
    explicit FSRef(platform::NodeRef node);
    platform::ReferenceNode* node() const { return mNode; }

private:
    void retain() const noexcept;
    void release() const noexcept;

    platform::ReferenceNode* mNode = nullptr;
};

/// A reference to what `path`, in UTF-8, names: -43 when nothing is there, other statuses as the system
/// refuses. A symbolic link at the end is not followed. Relative paths start at the current folder; slashes
/// at the end do not count. `ref` is untouched on failure. About 4 system calls.
NS_EXPORT OSStatus FSPathMakeRef(const std::string& path, FSRef& ref);

/// The absolute path at which the object is now, without symbolic links, also when a folder above it was
/// moved and a link left in its place. -43 when it is gone: it was removed, is not reachable by any path, or
/// could not be found. The path was seen to lead to the object during the call. Four system calls while the
/// object is held and has not moved; a search ends after 200,000 entries, or after 50 ms when the hundred
/// nearest folders have been read.
NS_EXPORT OSStatus FSRefMakePath(const FSRef& ref, std::string& path);

/// 0 when both refer to the same object, -1420 when they do not, -1303 when even the volumes differ. Two hard
/// links are the same object. Two references that name nothing are the same. No system call.
NS_EXPORT OSStatus FSCompareFSRefs(const FSRef& a, const FSRef& b);

/// An order of objects that stays while they exist, for those that have no better one: negative, 0 or
/// positive. A reference that names nothing comes first.
NS_EXPORT int FSOrderFSRefs(const FSRef& a, const FSRef& b);

/// Replaces a reference to a symbolic link, the alias file of this system, by one to its target; every other
/// stays as it is. -43 when the link dangles, -1043 when it leads to itself; `ref` is untouched then.
///
/// With `resolveChain` links that lead to links are followed to their end, otherwise the first only.
/// `targetIsFolder` and `wasAliased` may be null; they tell about the result and about what `ref` was.
NS_EXPORT OSStatus FSResolveAliasFile(FSRef& ref, bool resolveChain, bool* targetIsFolder, bool* wasAliased);

/// Closes the descriptors that all references of the process hold, before a volume is unmounted for instance.
/// The references stay good; each takes a descriptor again when it is used. How many they may hold is taken
/// from the process's limit anew, which only shrinks otherwise, when the process runs out of them.
NS_EXPORT void FSReleaseDescriptors();
