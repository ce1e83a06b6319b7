#pragma once

#include "tests/fixture.h"
#include "tests/jobs/recorder.h"

/// A queue, its delegate and three jobs.
struct LUMJobQueueTest : ObjectTest {
    LUMJobQueueTest() { queue->setDelegate(recorder); }

    NSRef<NamedJob> job(const std::string& name) { return NSMake<NamedJob>(name); }
    /// Active, pending and all.
    std::string counts() const
    {
        return std::to_string(queue->numberOfActiveJobs()) + "+"
            + std::to_string(queue->numberOfPendingJobs()) + "=" + std::to_string(queue->numberOfJobs());
    }

    NSRef<LUMJobQueue> queue = NSMake<LUMJobQueue>();
    NSRef<Recorder> recorder = NSMake<Recorder>();
    NSRef<NamedJob> a = job("a");
    NSRef<NamedJob> b = job("b");
    NSRef<NamedJob> c = job("c");
};
