#pragma once

#include "platform/runloop/main_queue_wake.h"

#include <string>

/// A wake with a clock that stands until a wait, which moves it on to what is waited for.
class FakeWake final : public platform::MainQueueWake {
public:
    /// What the queue asked for, as text.
    struct Log {
        Clock::time_point now { std::chrono::seconds(1000) };
        bool raised = false;
        std::optional<Clock::time_point> alarm;
        std::string story;
    };

    explicit FakeWake(Log& log) : mLog(log) { }

    void raise() override
    {
        mLog.raised = true;
        mLog.story += "raise ";
    }
    void clear() override
    {
        mLog.raised = false;
        mLog.story += "clear ";
    }
    void setAlarm(std::optional<Clock::time_point> due) override
    {
        mLog.alarm = due;
        mLog.story += due ? "alarm " : "noalarm ";
    }
    Clock::time_point now() const override { return mLog.now; }

    void wait(std::optional<Clock::time_point> deadline) override
    {
        mLog.story += "wait ";
        if (mLog.raised)
            return;
        if (mLog.alarm && (!deadline || *mLog.alarm < *deadline))
            mLog.now = *mLog.alarm;
        else
            mLog.now = deadline.value();
    }

    int raisedDescriptor() const override { return -1; }
    int alarmDescriptor() const override { return -1; }
    int descriptor() override { return -1; }
    void renewAfterFork() override { }

private:
    Log& mLog;
};
