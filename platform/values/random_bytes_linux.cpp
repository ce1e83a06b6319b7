#include "platform/values/random_bytes.h"

#include <cerrno>
#include <sys/random.h>

namespace platform {

bool fillWithRandomBytes(std::span<std::byte> bytes)
{
    for (;;) {
        const ssize_t count = getrandom(bytes.data(), bytes.size(), 0);
        if (count == static_cast<ssize_t>(bytes.size()))
            return true; // up to 256 bytes come whole
        if (count >= 0 || errno != EINTR)
            return false;
    }
}

}
