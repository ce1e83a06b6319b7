#pragma once

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSNotificationCenter.h"
#include "tests/fixture.h"

#include <functional>
#include <string>

/// Writes down what it is told.
class Observer : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"first:", &Observer::first>(),
            NSMethodOf<"second:", &Observer::second>(),
            NSMethodOf<"fail:", &Observer::fail>(),
            NSMethodOf<"nothing", &Observer::nothing>(),
        };
        static const NSClass& type = NSClass::define("Observer", &NSObject::classObject(), kMethods);
        return type;
    }

    void first(NSNotification& notification) { hear("1", notification); }
    void second(NSNotification& notification) { hear("2", notification); }
    void fail(NSNotification&) { throw NSException(NSRangeException, "deaf"); }
    void nothing() { }

    std::function<void(NSNotification&)> onHearing;

protected:
    Observer(std::string name, std::string& told) : mName(std::move(name)), mTold(told) { }
    ~Observer() override = default;

private:
    void hear(const char* selector, NSNotification& notification)
    {
        mTold += mName + selector + ' ';
        if (onHearing)
            onHearing(notification);
    }

    const std::string mName;
    std::string& mTold;
};

inline const NSSelector kFirst("first:");
inline const NSSelector kSecond("second:");

/// A centre of its own.
class NSNotificationCenterTest : public ObjectTest {
protected:
    NSRef<Observer> observer(const char* name) { return NSMake<Observer>(name, told); }
    std::string take() { return std::exchange(told, ""); }
    std::string posted(const NSRef<NSString>& name, const NSId& object)
    {
        center->postNotificationName(name, object);
        return take();
    }

    std::string told;
    NSRef<NSNotificationCenter> center = NSMake<NSNotificationCenter>();
    // Equal, but not the same.
    NSId x = NSMutableString::stringWithString("object");
    NSId y = NSMutableString::stringWithString("object");
};
