#include "platform/runloop/main_queue_wake.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <iterator>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>
#include <system_error>
#include <unistd.h>

namespace platform {

namespace {

using Clock = MainQueueWake::Clock;

constexpr int kNone = -1;

timespec timespecOf(Clock::duration duration)
{
    auto seconds = std::chrono::floor<std::chrono::seconds>(duration);
    auto rest = std::chrono::duration_cast<std::chrono::nanoseconds>(duration - seconds);
    return { seconds.count(), rest.count() };
}

int openRaised()
{
    return eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
}
int openAlarm()
{
    return timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK);
}

[[noreturn]] void fail(int error, const char* what)
{
    throw std::system_error(error, std::generic_category(), what);
}

class Descriptor {
public:
    explicit Descriptor(int number) : mNumber(number) { }
    ~Descriptor()
    {
        if (mNumber != kNone)
            close(mNumber);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return mNumber; }
    bool isOpen() const { return mNumber != kNone; }
    void open(int number) { mNumber = number; }

    /// Puts a new open file behind the same number. Closing first leaves room in a full table.
    template<typename Open> void renew(Open openFile)
    {
        close(mNumber);
        int fresh = openFile();
        if (fresh == kNone || fresh == mNumber)
            return;
        dup3(fresh, mNumber, O_CLOEXEC);
        close(fresh);
    }

private:
    int mNumber;
};

class LinuxWake final : public MainQueueWake {
public:
    LinuxWake() : mRaised(openRaised()), mAlarm(mRaised.isOpen() ? openAlarm() : kNone)
    {
        int error = errno;
        if (!mAlarm.isOpen())
            fail(error, "the main queue's descriptor");
    }

    void raise() override
    {
        uint64_t one = 1;
        // A full counter is as readable as it gets, so a refusal loses nothing.
        [[maybe_unused]] ssize_t written = write(mRaised.number(), &one, sizeof one);
    }

    void clear() override
    {
        uint64_t count;
        [[maybe_unused]] ssize_t taken = read(mRaised.number(), &count, sizeof count);
    }

    void setAlarm(std::optional<Clock::time_point> due) override
    {
        itimerspec when {};
        if (due)
            when.it_value = timespecOf(due->time_since_epoch());
        timerfd_settime(mAlarm.number(), TFD_TIMER_ABSTIME, &when, nullptr);
    }

    Clock::time_point now() const override { return Clock::now(); }

    void wait(std::optional<Clock::time_point> deadline) override
    {
        pollfd descriptors[] = { { mRaised.number(), POLLIN, 0 }, { mAlarm.number(), POLLIN, 0 } };
        timespec timeout {};
        if (deadline)
            timeout = timespecOf(std::max(*deadline - now(), Clock::duration::zero()));
        ppoll(descriptors, std::size(descriptors), deadline ? &timeout : nullptr, nullptr);
    }

    int raisedDescriptor() const override { return mRaised.number(); }
    int alarmDescriptor() const override { return mAlarm.number(); }

    int descriptor() override
    {
        if (!mBoth.isOpen())
            mBoth.open(openBoth());
        if (!mBoth.isOpen())
            fail(errno, "the main queue's descriptor");
        return mBoth.number();
    }

    void renewAfterFork() override
    {
        // Without these a child would wake its parent, and take the parent's wakes away.
        mRaised.renew(openRaised);
        mAlarm.renew(openAlarm);
        if (mBoth.isOpen())
            mBoth.renew([this] { return openBoth(); });
    }

private:
    int openBoth() const
    {
        int both = epoll_create1(EPOLL_CLOEXEC);
        for (int member : { mRaised.number(), mAlarm.number() }) {
            epoll_event event {};
            event.events = EPOLLIN;
            if (both == kNone || epoll_ctl(both, EPOLL_CTL_ADD, member, &event) == 0)
                continue;
            int error = errno;
            close(both);
            errno = error;
            both = kNone;
        }
        return both;
    }

    Descriptor mRaised;
    Descriptor mAlarm;
    Descriptor mBoth { kNone };
};

}

std::unique_ptr<MainQueueWake> MainQueueWake::open()
{
    return std::make_unique<LinuxWake>();
}

}
