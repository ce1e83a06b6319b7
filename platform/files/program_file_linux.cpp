#include "platform/files/program_file.h"

#include <climits>
#include <unistd.h>

namespace platform {

std::string programFile()
{
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path);
    return length > 0 ? std::string(path, static_cast<std::size_t>(length)) : std::string();
}

}
