#pragma once

#include "platform/files/tree_system.h"

namespace platform {

/// A place in a tree of folders and the way back up, however deep, by a few descriptors.
///
/// The way up is checked: when a folder was moved elsewhere meanwhile, leave() fails instead of going on in
/// another part of the tree. Operations answer 0 or a negative errno.
class FolderStack {
public:
    /// Stands in `base`, an open folder that stays the caller's.
    FolderStack(TreeSystem& system, int base);
    ~FolderStack();
    FolderStack(const FolderStack&) = delete;
    FolderStack& operator=(const FolderStack&) = delete;

    int folder() const { return mLevels.back().folder; } ///< Open as long as one stays in it.
    std::size_t depth() const { return mLevels.size() - 1; }

    int enter(const std::string& name); ///< A folder here; on failure one stays.
    /// Closes a descriptor that can be had again later; false when there is none.
    bool giveBack();
    int leave(); ///< To the folder above; after a failure the stack is of no use.

private:
    struct Level {
        int folder = -1; // closed for want of descriptors
        TreeSystem::Identity identity; // known once it has been closed
    };

    int reopen(Level& above);

    TreeSystem& mSystem;
    std::vector<Level> mLevels;
    std::size_t mOldestOpen = 1; // none below is open, but for the base
};

}
