#pragma once

#include "platform/desktop/built_in_icons.h"

#include <string>
#include <vector>

namespace platform {

/// What a file is shown as.
struct FileIcon {
    std::vector<std::string> names; ///< in icon themes, the most exact first
    BuiltInIcon builtIn = BuiltInIcon::Unknown; ///< where no theme has one of them
};

/// The icon of what is at `path`, by its name if that tells a type and by its first bytes otherwise. Links
/// are followed; one that leads nowhere has the icon of links. When nothing is there, the icon of what the
/// name promises.
FileIcon iconOfFile(const std::string& path);

/// The icon of files whose names end in `extension`, without the dot.
FileIcon iconOfExtension(const std::string& extension);

FileIcon iconOfFolders();
FileIcon iconOfApplications();

}
