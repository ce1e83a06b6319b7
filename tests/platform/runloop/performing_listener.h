#pragma once

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSThread.h"

#include <functional>
#include <string>

/// Tells what is performed on it, and on which thread.
class Listener : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"ring", &Listener::ring>(),
            NSMethodOf<"hear:", &Listener::hear>(),
            NSMethodOf<"fail", &Listener::fail>(),
        };
        static const NSClass& type = NSClass::define("Listener", &NSObject::classObject(), kMethods);
        return type;
    }

    void ring() { say("ring"); }
    void hear(const NSRef<NSString>& what) { say(what ? what->utf8() : "null"); }
    void fail() { throw NSException(NSRangeException, "deaf"); }
    std::string take() { return std::exchange(mTold, ""); }

    std::function<void()> atEnd;

protected:
    Listener() = default;
    ~Listener() override
    {
        if (atEnd)
            atEnd();
    }

private:
    void say(const std::string& what) { mTold += what + (NSThread::isMainThread() ? "@main " : "@other "); }

    std::string mTold;
};

inline const NSSelector kRing("ring");
inline const NSSelector kHear("hear:");
