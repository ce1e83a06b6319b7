#pragma once

#include "watching/inotify_decode.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace lum {

/// What can happen to a watched object. The values are part of the watcher's interface.
enum VnodeChange : std::uint32_t {
    kVnodeDelete = 0x01,
    kVnodeWrite = 0x02,
    kVnodeExtend = 0x04,
    kVnodeAttrib = 0x08,
    kVnodeLink = 0x10,
    kVnodeRename = 0x20,
    kVnodeRevoke = 0x40,
};

/// What tells a file or folder from all others that are there at the time.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    bool operator==(const FileIdentity&) const = default;
};

/// One look at a file or folder.
struct FileStatus : FileIdentity {
    std::uint64_t size = 0;
    std::int64_t modified = 0; ///< Time of the last write, in nanoseconds.
    std::int64_t changed = 0; ///< Time of the last change of any kind, in nanoseconds.
    std::uint32_t links = 0;
    std::uint32_t mode = 0;
    std::uint32_t user = 0;
    std::uint32_t group = 0;
    /// The last change was so shortly before the look that another one could carry the same time.
    bool isRecent = false;

    bool isFolder() const;
};

/// What is remembered of a watched path from one event to the next.
struct WatchedState {
    FileStatus status; ///< As far as it was accounted for in reports.
    bool isNamed = true; ///< The path led to the object when it was last looked at.
    bool isDeleted = false; ///< The deletion has been reported.
    bool hasUnseenWrites = false; ///< Size and time of the last write are older than the last report.
};

/// The events of one read about one object, folded into one.
struct RawChanges {
    std::uint32_t flags = 0; ///< inotify bits of the events about the object itself.
    bool childrenChanged = false;
    bool subfoldersChanged = false;
    /// Whether the path still leads to the object is in doubt: the folder above has told that the name was
    /// removed, or a link went away a moment ago.
    bool isNameInDoubt = false;
    bool isNameRemoved = false; ///< It is the folder above that has told so.
    std::vector<std::uint32_t> subfoldersMovedOut; ///< Cookies of moves whose second half has not come yet.

    /// Takes in an event about the object, or about a child of it when it is a folder.
    void add(const InotifyEvent& event);

    bool isUnmounted() const { return (flags & inotify::kUnmount) != 0; }
    /// Whether a look at the path is needed to tell what of `changes` these are. It costs more than all else
    /// that a plain write needs.
    bool needsLook(std::uint32_t changes) const;
    /// The kernel watch is gone or about to go.
    bool hasEnded() const
    {
        return (flags & (inotify::kIgnored | inotify::kUnmount | inotify::kDeleteSelf)) != 0;
    }
};

struct VnodeReport {
    std::uint32_t changes = 0;
    /// The object has lost a link but still has this name. The kernel tells of the loss a moment before the
    /// name goes, and tells nothing afterwards, so the path must be looked at once more.
    bool mustSettle = false;
};

/// What the events of one read mean for one path. `look` is what is at the path, seen after the read, empty
/// when nothing is there or no look was needed; `state` is brought up to date. `isAstray` tells that the path
/// does not lead into the folder that the object was added from, as when that was moved: then what is found
/// there, or not found, says nothing of the object.
///
/// The kernel's events say less than they seem to: a file that somebody holds open tells of its removal only
/// by a change of attributes, a removed folder may tell nothing at all, and neither growth nor link counts
/// are told apart. So the look decides.
VnodeReport vnodeChanges(
    const RawChanges& raw, WatchedState& state, const std::optional<FileStatus>& look, bool isAstray = false);

/// What is known of a kernel watch after events were lost.
enum class WatchFate { Alive, Dead, Unmounted, Unknown };

/// What has changed at a path since the last report, when the kernel has thrown events away. What cannot be
/// seen to be unchanged is reported as changed.
std::uint32_t vnodeChangesAfterLoss(
    WatchFate fate, WatchedState& state, const std::optional<FileStatus>& look);

}
