#pragma once

#include "tests/watching/change_names.h"
#include "tests/watching/fake_inotify.h"
#include "watching/inotify_queue.h"

#include <gtest/gtest.h>

namespace lum {

using namespace std::chrono_literals;

/// A queue over an inotify without files.
class InotifyQueueTest : public testing::Test {
public:
    using Token = KernelQueue::Token;

    void SetUp() override { queue = InotifyQueue::open(system); }
    void TearDown() override
    {
        queue.reset();
        EXPECT_EQ(system.openDescriptors, 0);
    }

    /// The first path is 1, the next one 2.
    Token add(const std::string& path, std::uint32_t changes = kEveryChange)
    {
        EXPECT_TRUE(queue->add(++mLastToken, path, changes)) << path;
        return mLastToken;
    }

    /// What one wait gives, as in "1:WRITE 2:WRITE EXTEND".
    std::string wait()
    {
        std::string text;
        for (const KernelQueue::Event& event : queue->wait(5s))
            text +=
                (text.empty() ? "" : " ") + std::to_string(event.token) + ":" + changeNames(event.changes);
        return text;
    }

    FakeInotify system;
    std::unique_ptr<InotifyQueue> queue;

private:
    Token mLastToken = 0;
};

}
