#include "platform/runloop/main_queue_wake.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <system_error>
#include <unistd.h>

namespace {

using platform::MainQueueWake;

/// Leaves the process room for that many new descriptors.
class DescriptorLimit {
public:
    explicit DescriptorLimit(int room)
    {
        getrlimit(RLIMIT_NOFILE, &mUsual);
        const int first = dup(STDERR_FILENO);
        close(first);
        rlimit limit = mUsual;
        limit.rlim_cur = static_cast<rlim_t>(first + room);
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    ~DescriptorLimit() { setrlimit(RLIMIT_NOFILE, &mUsual); }
    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;

private:
    rlimit mUsual {};
};

template<typename Call> std::errc problemOf(Call call)
{
    try {
        call();
    } catch (const std::system_error& problem) {
        return static_cast<std::errc>(problem.code().value());
    }
    return {};
}

TEST(MainQueueWakeTest, ThrowsWhenTheProcessHasNoMoreDescriptors)
{
    for (int room : { 0, 1 }) {
        const DescriptorLimit limit(room);
        EXPECT_EQ(problemOf([] { (void)MainQueueWake::open(); }), std::errc::too_many_files_open) << room;
    }
    EXPECT_NE(MainQueueWake::open(), nullptr);
}

TEST(MainQueueWakeTest, ThrowsForWantOfTheJoinedDescriptorAndMakesItLater)
{
    auto wake = MainQueueWake::open();
    {
        const DescriptorLimit limit(0);
        EXPECT_EQ(problemOf([&] { (void)wake->descriptor(); }), std::errc::too_many_files_open);
    }
    EXPECT_GE(wake->descriptor(), 0);
}

}
