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

/// The number of a new descriptor, or the negated errno value of what refused it.
int resultOf(int number)
{
    return number < 0 ? -errno : number;
}

timespec timespecOf(Clock::duration duration)
{
    auto seconds = std::chrono::floor<std::chrono::seconds>(duration);
    auto rest = std::chrono::duration_cast<std::chrono::nanoseconds>(duration - seconds);
    return { seconds.count(), rest.count() };
}

int openRaised()
{
    return resultOf(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
}
int openAlarm()
{
    return resultOf(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK));
}

class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int opened) { open(opened); }
    ~Descriptor()
    {
        if (isOpen())
            close(mNumber);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return mNumber; }
    bool isOpen() const { return mNumber >= 0; }
    /// Takes over what an open function gave; throws std::system_error when that was a refusal.
    void open(int opened)
    {
        if (opened < 0)
            throw std::system_error(-opened, std::generic_category(), "the main queue's descriptor");
        mNumber = opened;
    }

    /// Puts a new open file behind the same number. Closing first leaves room in a full table.
    template<typename Open> void renew(Open openFile)
    {
        close(mNumber);
        int fresh = openFile();
        if (fresh < 0 || fresh == mNumber)
            return;
        dup3(fresh, mNumber, O_CLOEXEC);
        close(fresh);
    }

private:
    int mNumber = -1;
};

class LinuxWake final : public MainQueueWake {
public:
    LinuxWake() : mRaised(openRaised()), mAlarm(openAlarm()) { }

    void raise() override
    {
        std::uint64_t one = 1;
        // A full counter is as readable as it gets, so a refusal loses nothing.
        [[maybe_unused]] ssize_t written = write(mRaised.number(), &one, sizeof one);
    }

    void clear() override
    {
        std::uint64_t count;
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
        const int both = resultOf(epoll_create1(EPOLL_CLOEXEC));
        if (both < 0)
            return both;
        for (int member : { mRaised.number(), mAlarm.number() }) {
            epoll_event event {};
            event.events = EPOLLIN;
            if (const int added = resultOf(epoll_ctl(both, EPOLL_CTL_ADD, member, &event)); added < 0) {
                close(both);
                return added;
            }
        }
        return both;
    }

    Descriptor mRaised;
    Descriptor mAlarm;
    Descriptor mBoth;
};

}

std::unique_ptr<MainQueueWake> MainQueueWake::open()
{
    return std::make_unique<LinuxWake>();
}

}
