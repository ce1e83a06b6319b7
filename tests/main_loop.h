#pragma once

#include "platform/runloop/main_queue.h"

#include <gtest/gtest.h>
#include <thread>

/// Serves the main queue, as an application's main thread does, until `body` has run on another thread.
template<typename Body> void serveMainLoopWhile(Body body)
{
    auto& queue = platform::MainQueue::shared();
    std::thread thread([&] {
        body();
        queue.stop();
    });
    EXPECT_TRUE(queue.run(platform::MainQueue::Clock::now() + std::chrono::seconds(60))) << "gave up";
    thread.join();
}
