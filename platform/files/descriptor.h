#pragma once

#include <unistd.h>
#include <utility>

namespace platform {

/// A descriptor of the running system that is closed at the end of a scope. A negative number is none, and
/// may be what a call answered that failed.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : mNumber(number) { }
    ~Descriptor()
    {
        if (mNumber >= 0)
            ::close(mNumber);
    }
    Descriptor(Descriptor&& other) noexcept : mNumber(std::exchange(other.mNumber, -1)) { }
    Descriptor& operator=(Descriptor other) noexcept
    {
        std::swap(mNumber, other.mNumber);
        return *this;
    }

    explicit operator bool() const { return mNumber >= 0; }
    int number() const { return mNumber; }

private:
    int mNumber;
};

}
