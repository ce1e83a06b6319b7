#include "LUMPlatform/NSLog.h"

#include "platform/runloop/log_line.h"
#include "tests/fixture.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <gmock/gmock.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace std::chrono_literals;

/// Text that goes to standard error while `call` runs.
template<typename Call> std::string standardErrorOf(Call call)
{
    testing::internal::CaptureStderr();
    call();
    return testing::internal::GetCapturedStderr();
}

/// A fixed zone for the test, whatever the machine's is.
class Zone {
public:
    explicit Zone(const char* name)
    {
        if (const char* before = std::getenv("TZ"))
            mBefore = before;
        setenv("TZ", name, 1);
        tzset();
    }
    ~Zone()
    {
        mBefore.empty() ? unsetenv("TZ") : setenv("TZ", mBefore.c_str(), 1);
        tzset();
    }
    Zone(const Zone&) = delete;
    Zone& operator=(const Zone&) = delete;

private:
    std::string mBefore;
};

struct NSLogTest : ObjectTest {
    ~NSLogTest() override { NSSetLogSink(nullptr); }
};

TEST_F(NSLogTest, WritesTimeProgramProcessAndThread)
{
    Zone zone("EST5");
    platform::LogOrigin origin { std::chrono::system_clock::from_time_t(1773065107) + 120ms, "incoming", 4711,
        4715 };
    EXPECT_EQ(platform::logLine(origin, "Couldn't close"),
        "2026-03-09 09:05:07.120 incoming[4711:4715] Couldn't close\n");
}

TEST_F(NSLogTest, WritesTimesBeforeTheEpoch)
{
    Zone zone("UTC");
    platform::LogOrigin origin { std::chrono::system_clock::from_time_t(0) - 1ms, "p", 1, 2 };
    EXPECT_EQ(platform::logLine(origin, ""), "1969-12-31 23:59:59.999 p[1:2] \n");
}

TEST_F(NSLogTest, WritesOneLineToStandardError)
{
    std::string line = standardErrorOf([] { NSLog("%@ has %d of %.1f", "it", 3, 4.5); });
    EXPECT_THAT(line,
        testing::MatchesRegex("[0-9]+-[0-9]+-[0-9]+ [0-9]+:[0-9]+:[0-9]+\\.[0-9][0-9][0-9] runloop_test\\["
            + std::to_string(getpid()) + ":" + std::to_string(gettid()) + "\\] it has 3 of 4\\.5\n"));
}

TEST_F(NSLogTest, WritesALongLineWhole)
{
    std::string line = standardErrorOf([] { NSLog("%@", std::string(100000, 'x')); });
    EXPECT_EQ(line.substr(line.size() - 100002), " " + std::string(100000, 'x') + "\n");
}

TEST_F(NSLogTest, WritesNullForANullFormat)
{
    EXPECT_THAT(standardErrorOf([] { NSLog(nullptr); }), testing::EndsWith(" (null)\n"));
}

TEST_F(NSLogTest, LeavesErrnoAsItWas)
{
    std::string line = standardErrorOf([] {
        errno = EBADF;
        NSLog("%d", errno);
        EXPECT_EQ(errno, EBADF);
    });
    EXPECT_THAT(line, testing::EndsWith(" 9\n"));
}

TEST_F(NSLogTest, GivesTheTextToASink)
{
    std::string told;
    NSSetLogSink([&](const NSRef<NSString>& text) { told += text->utf8() + ";"; });
    EXPECT_EQ(standardErrorOf([] {
        NSLog("one");
        NSLog("two %d", 2);
    }),
        "");
    EXPECT_EQ(told, "one;two 2;");
}

TEST_F(NSLogTest, GivesBackTheSinkBefore)
{
    std::string told;
    EXPECT_FALSE(NSSetLogSink([&](const NSRef<NSString>&) { told += "first "; }));
    NSLogSink first = NSSetLogSink([&](const NSRef<NSString>&) { told += "second "; });
    NSLog("a");
    NSSetLogSink(first);
    NSLog("b");
    EXPECT_EQ(told, "second first ");
}

TEST_F(NSLogTest, MayLogAndChangeTheSinkFromASink)
{
    std::string told;
    NSSetLogSink([&](const NSRef<NSString>& text) {
        told += "outer:" + text->utf8() + " ";
        NSSetLogSink([&](const NSRef<NSString>& inner) { told += "inner:" + inner->utf8() + " "; });
        NSLog("again");
    });
    NSLog("once");
    EXPECT_EQ(told, "outer:once inner:again ");
}

TEST_F(NSLogTest, TakesLinesOfManyThreads)
{
    std::atomic<int> lines = 0;
    NSSetLogSink([&](const NSRef<NSString>&) { ++lines; });
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([] {
            for (int n = 0; n < 250; ++n)
                NSLog("%d", n);
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(lines, 1000);
}

}
