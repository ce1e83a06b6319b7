#include "platform/runloop/log_line.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <unistd.h>

namespace platform {

LogOrigin LogOrigin::here()
{
    return { std::chrono::system_clock::now(), program_invocation_short_name, getpid(), gettid() };
}

std::string logLine(const LogOrigin& origin, std::string_view text)
{
    auto second = std::chrono::floor<std::chrono::seconds>(origin.time);
    auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(origin.time - second).count();
    std::time_t time = std::chrono::system_clock::to_time_t(second);
    std::tm local {};
    localtime_r(&time, &local);

    char stamp[64];
    std::snprintf(stamp, sizeof stamp, "%04d-%02d-%02d %02d:%02d:%02d.%03d ", local.tm_year + 1900,
        local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec,
        static_cast<int>(milliseconds));
    char ids[32];
    std::snprintf(ids, sizeof ids, "[%d:%d] ", origin.process, origin.thread);

    std::string line;
    (((line += stamp) += origin.program) += ids) += text;
    return line += '\n';
}

void writeToStandardError(std::string_view line)
{
    while (!line.empty()) {
        ssize_t written = write(STDERR_FILENO, line.data(), line.size());
        int error = errno;
        if (written < 0 && error != EINTR)
            return; // there is nowhere left to tell
        if (written > 0)
            line.remove_prefix(static_cast<std::size_t>(written));
    }
}

}
