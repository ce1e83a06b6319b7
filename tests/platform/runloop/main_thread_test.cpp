#include "platform/runloop/main_thread.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

bool inOtherThread(bool (*question)())
{
    bool answer = false;
    std::thread([&] { answer = question(); }).join();
    return answer;
}

/// The answer of the thread that goes on in the child of a fork().
bool inForkedChild()
{
    pid_t child = fork();
    if (child == 0)
        _exit(platform::isMainThread() ? 1 : 0);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 1;
}

TEST(MainThreadTest, IsTheThreadThatEnteredMain)
{
    EXPECT_TRUE(platform::isMainThread());
}

TEST(MainThreadTest, IsNoOtherThread)
{
    EXPECT_FALSE(inOtherThread(platform::isMainThread));
}

TEST(MainThreadTest, AnswersTheSameWhenAskedAgain)
{
    EXPECT_FALSE(inOtherThread([] { return platform::isMainThread() || platform::isMainThread(); }));
}

TEST(MainThreadTest, IsTheForkingThreadInTheChild)
{
    EXPECT_TRUE(inForkedChild());
}

TEST(MainThreadTest, IsAnotherThreadInTheChildWhenThatOneForked)
{
    bool before = true;
    bool inChild = false;
    std::thread([&] {
        before = platform::isMainThread();
        inChild = inForkedChild();
    }).join();
    EXPECT_FALSE(before);
    EXPECT_TRUE(inChild);
}

}
