#include "watching/vnode_changes.h"

#include <algorithm>
#include <utility>

namespace lum {

namespace {

constexpr std::uint32_t kFileTypeMask = 0170000;
constexpr std::uint32_t kFolderType = 0040000;
constexpr std::uint32_t kChildEvents =
    inotify::kCreate | inotify::kDelete | inotify::kMovedFrom | inotify::kMovedTo;

// An object that lost its last link may still be found by its name for a moment; it counts as gone. A file
// system that never counts links is believed to have what it shows.
bool isSameObject(const FileStatus& before, const FileStatus& now)
{
    return FileIdentity(before) == FileIdentity(now) && (now.links > 0 || before.links == 0);
}

bool hasOtherOwnerOrMode(const FileStatus& before, const FileStatus& now)
{
    return before.mode != now.mode || before.user != now.user || before.group != now.group;
}

std::uint32_t deleteOnce(WatchedState& state)
{
    if (state.isDeleted)
        return 0;
    state.isDeleted = true;
    return kVnodeDelete;
}

void foundAgain(WatchedState& state, const FileStatus& now)
{
    state.isNamed = true;
    state.isDeleted = false;
    state.status.changed = now.changed;
    state.status.isRecent = now.isRecent;
}

// Takes one kind of raw change after the other into account.
struct Accounting {
    const RawChanges& raw;
    WatchedState& state;
    const FileStatus* now; // null unless the path leads to the watched object

    bool has(std::uint32_t flag) const { return (raw.flags & flag) != 0; }

    std::uint32_t contentChanges()
    {
        std::uint32_t changes = 0;
        if (has(inotify::kModify) || raw.childrenChanged) {
            changes |= kVnodeWrite;
            state.hasUnseenWrites = !now;
            if (now) {
                if (has(inotify::kModify) && now->size > state.status.size)
                    changes |= kVnodeExtend;
                state.status.size = now->size;
                state.status.modified = now->modified;
            }
        }
        if (raw.subfoldersChanged || !raw.subfoldersMovedOut.empty())
            changes |= kVnodeLink;
        return changes;
    }

    VnodeReport attributeChanges()
    {
        VnodeReport report { kVnodeAttrib };
        if (!now)
            return report;
        const FileStatus before = state.status;
        const bool hadUnseenWrites = std::exchange(state.hasUnseenWrites, false);
        state.status.links = now->links;
        state.status.mode = now->mode;
        state.status.user = now->user;
        state.status.group = now->group;
        state.status.modified = now->modified;
        if (now->isFolder() || now->links == before.links)
            return report;
        const bool onlyLinks =
            !hasOtherOwnerOrMode(before, *now) && (before.modified == now->modified || hadUnseenWrites);
        return { onlyLinks ? kVnodeLink : kVnodeLink | kVnodeAttrib, now->links < before.links };
    }
};

}

bool FileStatus::isFolder() const
{
    return (mode & kFileTypeMask) == kFolderType;
}

void RawChanges::add(const InotifyEvent& event)
{
    // What happens inside a child is the child's own business: only the folder's list of names counts here.
    if (event.name.empty())
        flags |= event.flags & ~kChildEvents;
    if (!(event.flags & kChildEvents))
        return;
    childrenChanged = true;
    if (!(event.flags & inotify::kIsFolder))
        return;
    // A subfolder that only gets another name in here leaves the link count as it is.
    if (event.flags & inotify::kMovedFrom) {
        subfoldersMovedOut.push_back(event.cookie);
        return;
    }
    const auto movedOut = (event.flags & inotify::kMovedTo)
        ? std::find(subfoldersMovedOut.begin(), subfoldersMovedOut.end(), event.cookie)
        : subfoldersMovedOut.end();
    if (movedOut != subfoldersMovedOut.end())
        subfoldersMovedOut.erase(movedOut);
    else
        subfoldersChanged = true;
}

bool RawChanges::needsLook(std::uint32_t changes) const
{
    if (isNameInDoubt || (flags & (inotify::kAttrib | inotify::kMoveSelf)))
        return true;
    return (flags & inotify::kModify) && (changes & kVnodeExtend);
}

VnodeReport vnodeChanges(
    const RawChanges& raw, WatchedState& state, const std::optional<FileStatus>& look, bool isAstray)
{
    const FileStatus* now = look && isSameObject(state.status, *look) ? &*look : nullptr;
    Accounting accounting { raw, state, now };

    VnodeReport report;
    if (accounting.has(inotify::kMoveSelf)) {
        report.changes |= kVnodeRename;
        state.isNamed = now != nullptr;
    }
    report.changes |= accounting.contentChanges();
    if (raw.isUnmounted()) {
        report.changes |= kVnodeRevoke;
        return report;
    }
    const bool looksForName = raw.isNameInDoubt || accounting.has(inotify::kAttrib);
    const bool isTrusted = state.isNamed && (!isAstray || raw.isNameRemoved);
    if (raw.hasEnded() || (looksForName && isTrusted && !now)) {
        report.changes |= deleteOnce(state);
        state.isNamed = false;
    } else if (accounting.has(inotify::kAttrib)) {
        const VnodeReport attributes = accounting.attributeChanges();
        report.changes |= attributes.changes;
        report.mustSettle = attributes.mustSettle;
    }
    if (now && !raw.hasEnded())
        foundAgain(state, *now);
    return report;
}

std::uint32_t vnodeChangesAfterLoss(
    WatchFate fate, WatchedState& state, const std::optional<FileStatus>& look)
{
    const FileStatus* now = look && isSameObject(state.status, *look) ? &*look : nullptr;
    if (fate == WatchFate::Unmounted)
        return kVnodeRevoke;
    if (fate == WatchFate::Dead || (fate == WatchFate::Unknown && !now && state.isNamed)) {
        state.isNamed = false;
        return deleteOnce(state);
    }
    if (!now) {
        // The object lives on out of sight, and anything may have happened to it. Its name may have gone for
        // good, of which nothing more would be heard while something else keeps the object alive; if it
        // has only moved, its end is still to be told.
        const bool wasNamed = std::exchange(state.isNamed, false);
        return kVnodeWrite | kVnodeAttrib | (wasNamed ? kVnodeRename | kVnodeDelete : 0U);
    }
    const FileStatus before = std::exchange(state.status, *now);
    std::uint32_t changes = 0;
    if (before.size != now->size || before.modified != now->modified)
        changes |= kVnodeWrite;
    if (!now->isFolder() && now->size > before.size)
        changes |= kVnodeExtend;
    if (before.links != now->links)
        changes |= kVnodeLink;
    if (hasOtherOwnerOrMode(before, *now) || (!changes && before.changed != now->changed))
        changes |= kVnodeAttrib;
    if (before.isRecent)
        changes |= kVnodeWrite | kVnodeAttrib;
    foundAgain(state, *now);
    return changes;
}

}
