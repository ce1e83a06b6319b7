#pragma once

#include <cerrno>

namespace platform {

/// What a system call answers once it was not interrupted, or the negated errno value.
template<typename Call> auto retried(Call call) -> decltype(call())
{
    for (;;) {
        const auto result = call();
        if (result >= 0)
            return result;
        const int error = errno;
        if (error != EINTR)
            return -error;
    }
}

}
