#pragma once

#include "LUMFoundation/LUMJobQueue.h"
#include "LUMPlatform/NSClass.h"

#include <functional>
#include <string>

/// A job with a name for stories, whose start is up to the test.
class NamedJob : public LUMJob {
public:
    const std::string name;
    std::function<bool()> onStart; // instead of reporting the start and answering true
    std::function<void()> onCancel; // instead of nothing

    bool start() override { return onStart ? onStart() : LUMJob::start(); }
    bool reportStart() { return LUMJob::start(); }
    void cancel() override
    {
        if (onCancel)
            onCancel();
    }

protected:
    explicit NamedJob(std::string name_) : name(std::move(name_)) { }
    ~NamedJob() override = default;
};

/// A delegate of jobs and of queues that writes down what it hears: "start(a) complete(a) ".
class Recorder : public NSObject, public LUMJobDelegate, public LUMJobQueueDelegate {
public:
    std::string heard;
    std::function<void(const std::string& event, LUMJob& job)> onEvent; // during each message

    /// What was heard since the last time.
    std::string take() { return std::exchange(heard, std::string()); }

    void jobDidStart(LUMJob& job) override { hear("jobDidStart", job); }
    void jobDidPause(LUMJob& job) override { hear("jobDidPause", job); }
    void jobDidResume(LUMJob& job) override { hear("jobDidResume", job); }
    void jobDidComplete(LUMJob& job) override { hear("jobDidComplete", job); }
    void jobDidCancel(LUMJob& job) override { hear("jobDidCancel", job); }
    void jobStateDidChange(LUMJob& job) override { hear("jobStateDidChange", job); }

    void jobQueueDidStartJob(LUMJobQueue&, LUMJob& job) override { hear("start", job); }
    void jobQueueDidPauseJob(LUMJobQueue&, LUMJob& job) override { hear("pause", job); }
    void jobQueueDidResumeJob(LUMJobQueue&, LUMJob& job) override { hear("resume", job); }
    void jobQueueDidCancelJob(LUMJobQueue&, LUMJob& job) override { hear("cancel", job); }
    void jobQueueDidCompleteJob(LUMJobQueue&, LUMJob& job) override { hear("complete", job); }

protected:
    Recorder() = default;
    ~Recorder() override = default;

private:
    void hear(const std::string& event, LUMJob& job)
    {
        auto* named = dynamic_cast<NamedJob*>(&job);
        heard += event + "(" + (named ? named->name : "job") + ") ";
        if (onEvent)
            onEvent(event, job);
    }
};
