#pragma once

#include "tests/document/traced_child.h"

#include <gtest/gtest.h>

/// Runs `action` in a child process again and again, and kills that at its first system call, then at its
/// second, and so on, on the way in and on the way out, until one run comes to its end; after each, `check`
/// looks at what is there. Answers how many were killed; -1 when processes cannot be traced here.
inline int killAtEveryCall(const std::function<void()>& action, const std::function<void()>& check)
{
    constexpr int kMost = 10'000;
    for (int stops = 1; stops < kMost; ++stops) {
        TracedChild child([&] {
            action();
            return 0;
        });
        if (!child.isTraced())
            return -1;
        for (int stop = 0; stop < stops && child.isRunning(); ++stop)
            child.goOn();
        const bool isOver = !child.isRunning();
        if (!isOver)
            child.kill();
        check();
        if (isOver || testing::Test::HasFailure())
            return stops - 1;
    }
    ADD_FAILURE() << "the child never ends";
    return kMost;
}
