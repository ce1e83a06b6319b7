#include "platform/strings/home_directory.h"

#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace platform {

std::optional<std::string> homeDirectory(const std::string& user)
{
    if (user.empty())
        if (const char* home = std::getenv("HOME"); home && *home)
            return home;

    std::vector<char> text(1024);
    for (;;) {
        passwd entry {};
        passwd* found = nullptr;
        int error = user.empty() ? getpwuid_r(getuid(), &entry, text.data(), text.size(), &found)
                                 : getpwnam_r(user.c_str(), &entry, text.data(), text.size(), &found);
        if (error == ERANGE) {
            text.resize(text.size() * 2);
            continue;
        }
        if (!found || !found->pw_dir || !*found->pw_dir)
            return std::nullopt;
        return found->pw_dir;
    }
}

}
