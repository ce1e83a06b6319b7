#pragma once

#include "LUMFoundation/OVMainThreadProxy.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSThread.h"
#include "tests/fixture.h"
#include "tests/main_loop.h"

#include <functional>
#include <string>

/// The thread of the call.
inline const char* here()
{
    return NSThread::isMainThread() ? "main" : "other";
}

/// A target that tells each call and the thread it came on.
class Player : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"title", &Player::title>(),
            NSMethodOf<"setTitle:", &Player::setTitle>(),
            NSMethodOf<"add:to:", &Player::add>(),
            NSMethodOf<"half:", &Player::half>(),
            NSMethodOf<"play", &Player::play>(),
            NSMethodOf<"fail", &Player::fail>(),
            NSMethodOf<"mix:", &Player::mix>(),
        };
        static const NSClass& type = NSClass::define("Player", &NSObject::classObject(), kMethods);
        return type;
    }

    NSRef<NSString> title()
    {
        say("title");
        return mTitle;
    }
    void setTitle(const NSRef<NSString>& title)
    {
        say("setTitle");
        mTitle = title;
    }
    int add(int value, NSInteger sum) { return value + static_cast<int>(sum); }
    double half(double value) { return value / 2; }
    void play()
    {
        say("play");
        if (whilePlaying)
            whilePlaying();
    }
    void fail() { throw NSException(NSRangeException, "no such title"); }
    void mix(const NSId& /*track*/)
    {
        if (whilePlaying)
            whilePlaying();
    }

    std::string take() { return std::exchange(mTold, ""); }

    std::function<void()> whilePlaying;
    std::function<void()> atEnd;

protected:
    Player() = default;
    ~Player() override
    {
        if (atEnd)
            atEnd();
    }

private:
    void say(const char* what) { ((mTold += what) += '@') += std::string(here()) + ' '; }

    NSRef<NSString> mTitle = "first";
    std::string mTold;
};

inline const NSSelector kTitle("title");
inline const NSSelector kSetTitle("setTitle:");
inline const NSSelector kPlay("play");

/// A player and a proxy for it.
class OVMainThreadProxyTest : public ObjectTest {
protected:
    NSRef<Player> player = NSMake<Player>();
    NSId proxy = OVMainThreadProxy::mainThreadProxy(player);
};
