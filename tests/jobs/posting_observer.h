#pragma once

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSNotification.h"
#include "LUMPlatform/NSThread.h"

#include <string>

/// Tells what it hears, and on which thread.
class Observer : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"first:", &Observer::first>(),
            NSMethodOf<"second:", &Observer::second>(),
            NSMethodOf<"fail:", &Observer::fail>(),
        };
        static const NSClass& type = NSClass::define("Observer", &NSObject::classObject(), kMethods);
        return type;
    }

    void first(const NSRef<NSNotification>& notification) { hear("first", notification); }
    void second(const NSRef<NSNotification>& notification) { hear("second", notification); }
    void fail(const NSRef<NSNotification>&) { throw NSException(NSRangeException, "deaf"); }
    std::string take() { return std::exchange(mTold, ""); }

    NSRef<NSNotification> last;

private:
    void hear(const char* what, const NSRef<NSNotification>& notification)
    {
        (mTold += what) += NSThread::isMainThread() ? "@main " : "@other ";
        last = notification;
    }

    std::string mTold;
};

inline const NSSelector kFirst("first:");
inline const NSSelector kSecond("second:");
