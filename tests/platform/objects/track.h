#pragma once

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"

#include <functional>

/// A protocol that some of the classes below declare.
class Playing : public NSProtocol {
public:
    virtual int play() = 0;
};

/// A small class with methods of every kind of type, for the tests of dynamic calls.
class Track : public NSObject, public Playing {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"title", &Track::title>(),
            NSMethodOf<"setTitle:", &Track::setTitle>(),
            NSMethodOf<"seconds", &Track::seconds>(),
            NSMethodOf<"setSeconds:", &Track::setSeconds>(),
            NSMethodOf<"count", &Track::count>(),
            NSMethodOf<"big", &Track::big>(),
            NSMethodOf<"isLoud", &Track::isLoud>(),
            NSMethodOf<"range:plus:", &Track::range>(),
            NSMethodOf<"play", &Track::play>(),
            NSMethodOf<"joinedWith:", &Track::joinedWith>(),
            NSMethodOf<"fail", &Track::fail>(),
            NSMethodOf<"next", &Track::next>(),
        };
        static const NSClass& type = NSClass::define("Track", &NSObject::classObject(), kMethods);
        return type;
    }

    NSRef<NSString> title() const { return mTitle; }
    void setTitle(const NSRef<NSString>& title) { mTitle = title; }
    double seconds() const { return mSeconds; }
    void setSeconds(double seconds) { mSeconds = seconds; }
    int count() const { return mCount; }
    NSInteger big() const { return (NSInteger { 7 } << 32) | 3; }
    bool isLoud() const { return true; }
    NSRange range(NSRange range, NSUInteger plus) const
    {
        return { range.location + plus, range.length + plus };
    }
    int play() override { return ++mCount; }
    NSRef<NSString> joinedWith(Track& other) const { return mTitle->utf8() + other.mTitle->utf8(); }
    void fail() { throw NSException(NSRangeException, "it failed"); }
    NSRef<Track> next() const { return mNext; }
    void setNext(const NSRef<Track>& next) { mNext = next; }

    std::function<void()> atEnd;

protected:
    Track() = default;
    explicit Track(const NSRef<NSString>& title) : mTitle(title) { }
    ~Track() override
    {
        if (atEnd)
            atEnd();
    }

private:
    NSRef<NSString> mTitle;
    NSRef<Track> mNext;
    double mSeconds = 0;
    int mCount = 0;
};

/// A subclass with a class of its own that replaces one method.
class LoudTrack : public Track {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = { NSMethodOf<"volume", &LoudTrack::volume>() };
        static const NSClass& type = NSClass::define("LoudTrack", &Track::classObject(), kMethods);
        return type;
    }
    float volume() const { return 11; }
    int play() override { return 100; }

protected:
    LoudTrack() = default;
    ~LoudTrack() override = default;
};
