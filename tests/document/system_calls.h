#pragma once

#include "tests/document/traced_child.h"

#include <fcntl.h>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/syscall.h>
#include <vector>

/// Whether a call has to do with files, rather than with the memory or the process of whoever makes it.
inline bool isAboutFiles(const TracedChild::Call& call)
{
    switch (call.number) {
    case SYS_brk:
    case SYS_mmap:
    case SYS_munmap:
    case SYS_mprotect:
    case SYS_mremap:
    case SYS_madvise:
    case SYS_futex:
    case SYS_clock_gettime:
    case SYS_getrandom:
    case SYS_gettid:
    case SYS_getpid:
    case SYS_getuid:
    case SYS_geteuid:
    case SYS_sched_yield:
    case SYS_rt_sigaction:
    case SYS_rt_sigprocmask:
    case SYS_sigaltstack:
    case SYS_exit:
    case SYS_exit_group:
        return false;
    default:
        return true;
    }
}

/// The calls about files that `action` makes; none when processes cannot be traced here.
inline std::vector<TracedChild::Call> callsOf(const std::function<void()>& action)
{
    std::vector<TracedChild::Call> calls;
    TracedChild child([&] {
        action();
        return 0;
    });
    while (child.isRunning()) {
        if (const auto call = child.call(); call && isAboutFiles(*call))
            calls.push_back(*call);
        child.goOn();
    }
    return calls;
}

/// Whether the call makes a file that was not there.
inline bool makesFile(const TracedChild::Call& call)
{
    constexpr std::uint64_t kNew = O_CREAT | O_EXCL;
    return call.number == SYS_openat && (call.arguments[2] & kNew) == kNew;
}

inline bool isRename(const TracedChild::Call& call)
{
#ifdef SYS_rename
    if (call.number == SYS_rename || call.number == SYS_renameat)
        return true;
#endif
    return call.number == SYS_renameat2;
}

/// Runs `action` again and again, in a child each; `meddle` is called before its first call about files, in
/// the next run before the second, and so on, until a run comes to its end without. Each goes before with
/// `prepare`; afterwards `check` is told the result. False when processes cannot be traced here.
inline bool meddleAtEveryCall(const std::function<void()>& prepare, const std::function<bool()>& action,
    const std::function<void(TracedChild&)>& meddle, const std::function<void(bool result)>& check)
{
    constexpr int kMost = 1'000;
    for (int at = 0; at < kMost; ++at) {
        prepare();
        TracedChild child([&] { return action() ? 3 : 2; }); // what no sanitizer and no library ends with
        if (!child.isTraced())
            return false;
        std::string place;
        for (int calls = 0; child.isRunning(); child.goOn())
            if (const auto call = child.call(); call && isAboutFiles(*call) && calls++ == at) {
                place = "call " + std::to_string(at) + ", number " + std::to_string(call->number);
                meddle(child);
            }
        SCOPED_TRACE(place);
        const int result = child.result().value_or(-1);
        EXPECT_TRUE(result == 2 || result == 3) << "ended with " << result;
        check(result == 3);
        if (place.empty() || testing::Test::HasFailure())
            return true;
    }
    ADD_FAILURE() << "the child never ends";
    return true;
}

/// Lets each call about files fail with `error` in turn. False also when calls cannot be made to fail here.
inline bool failAtEveryCall(int error, const std::function<void()>& prepare,
    const std::function<bool()>& action, const std::function<void(bool result)>& check)
{
    const auto fail = [error](TracedChild& child) { child.failCall(error); };
    return kCallsCanFail && meddleAtEveryCall(prepare, action, fail, check);
}
