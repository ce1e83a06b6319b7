#pragma once

#include <string>
#include <vector>

namespace platform {

/// The folders that icon themes lie in, those of the user first.
std::vector<std::string> iconFolders();

/// The names of the icon themes to try, the user's own choice first. Not all of them need be there.
std::vector<std::string> chosenThemes();

}
