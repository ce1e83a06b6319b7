#pragma once

#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

/// Runs `action` in a child process again and again, and kills that at its first system call, then at its
/// second, and so on, on the way in and on the way out, until one run comes to its end; after each, `check`
/// looks at what is there. Answers how many were killed; -1 when processes cannot be traced here.
inline int killAtEveryCall(const std::function<void()>& action, const std::function<void()>& check)
{
    constexpr int kMost = 10'000;
    for (int stops = 1; stops < kMost; ++stops) {
        const pid_t child = fork();
        if (child == 0) {
            if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
                _exit(1);
            raise(SIGSTOP);
            action();
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        if (!WIFSTOPPED(status))
            return -1;
        for (int stop = 0; stop < stops && WIFSTOPPED(status); ++stop) {
            ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
            waitpid(child, &status, 0);
        }
        const bool isOver = !WIFSTOPPED(status);
        if (!isOver) {
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
        }
        check();
        if (isOver || testing::Test::HasFailure())
            return stops - 1;
    }
    ADD_FAILURE() << "the child never ends";
    return kMost;
}
