#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace platform {

/// Who writes a line to the log, and when.
struct LogOrigin {
    std::chrono::system_clock::time_point time;
    std::string_view program;
    pid_t process;
    pid_t thread;

    static LogOrigin here();
};

/// The line with its end; the time is local and to the millisecond. Depends on no locale.
std::string logLine(const LogOrigin& origin, std::string_view text);

/// Writes all of `line`, in one piece if the system takes it in one.
void writeToStandardError(std::string_view line);

}
