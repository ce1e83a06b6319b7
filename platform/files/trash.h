#pragma once

#include "platform/files/tree_system.h"

namespace platform {

/// What trashing asks of the desktop; tests stand in for one.
class TrashSystem {
public:
    static TrashSystem& real();
    virtual ~TrashSystem() = default;

    /// Has the desktop move the item to its trash, a link itself; false when it will not. Why, it tells too
    /// vaguely to rely on.
    virtual bool trashByDesktop(const std::string& path) = 0;
    /// The user's own trash, made if it is missing; empty when it cannot be made.
    virtual std::string homeTrash() = 0;
    /// The highest folder above this one that is on the same volume. Both are absolute, without links.
    virtual std::string topFolderOf(const std::string& folder) = 0;
    virtual uid_t user() = 0;
    virtual std::string localTime() = 0; ///< "2024-02-29T23:59:59"
};

/// Moves the item to the trash, a symbolic link itself; 0 or a negative errno, and then it is where it was,
/// but for what moveItem says of a removal that fails.
///
/// What the desktop will not do is done here by the rules of the freedesktop trash: into the user's own trash
/// when that is on the volume, else into the one at the top of the volume, else by a copy into the user's
/// own. Beside the item a .trashinfo file tells where it was and when it went.
int trashItem(TrashSystem& desktop, TreeSystem& system, const std::string& path);

}
