#include "LUMPlatform/NSWeak.h"

#include "tests/fixture.h"
#include "tests/platform/objects/track.h"

#include <thread>

namespace {

struct NSWeakTest : ObjectTest { };

TEST_F(NSWeakTest, GivesTheObjectWhileItLives)
{
    auto track = NSMake<Track>("a");
    NSWeak<Track> weak = track;
    EXPECT_TRUE(weak.get() == track);
}

TEST_F(NSWeakTest, IsNullOnceTheObjectIsGone)
{
    auto track = NSMake<Track>();
    NSWeak<Track> weak = track;
    track = nullptr;
    EXPECT_FALSE(weak.get());
}

TEST_F(NSWeakTest, DoesNotKeepTheObject)
{
    int ended = 0;
    auto track = NSMake<Track>();
    track->atEnd = [&] { ++ended; };
    NSWeak<Track> weak = track;
    NSWeak<Track> copy = weak;
    track = nullptr;
    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(copy.get());
}

TEST_F(NSWeakTest, IsNullAlreadyInsideTheObjectsDestructor)
{
    auto track = NSMake<Track>();
    NSWeak<Track> weak = track;
    bool seen = true;
    track->atEnd = [&] { seen = static_cast<bool>(weak.get()); };
    track = nullptr;
    EXPECT_FALSE(seen);
}

TEST_F(NSWeakTest, WorksThroughAProtocol)
{
    auto track = NSMake<Track>();
    NSWeak<Playing> weak = track;
    EXPECT_EQ(weak.get()->play(), 1);
    track = nullptr;
    EXPECT_FALSE(weak.get());
}

TEST_F(NSWeakTest, IsNullWhenMadeFromNull)
{
    NSWeak<Track> weak = NSRef<Track>();
    EXPECT_FALSE(weak.get());
}

TEST_F(NSWeakTest, GivesTheObjectOrNullWhileItEndsOnAnotherThread)
{
    for (int round = 0; round < 300; ++round) {
        auto track = NSMake<Track>("a");
        NSWeak<Track> weak = track;
        std::thread reader([weak] {
            while (NSRef<Track> alive = weak.get())
                EXPECT_EQ(alive->title()->utf8(), "a");
        });
        track = nullptr;
        reader.join();
    }
}

TEST_F(NSWeakTest, TellsWhatItRefersToWithoutTakingAReference)
{
    auto track = NSMake<Track>();
    auto other = NSMake<Track>();
    NSWeak<Track> weak = track;
    EXPECT_TRUE(weak.refersTo(track.get()));
    EXPECT_FALSE(weak.refersTo(other.get()));
    EXPECT_FALSE(weak.refersTo(nullptr));
    NSObject* before = track.get();
    track = nullptr;
    EXPECT_FALSE(weak.refersTo(before));
    EXPECT_TRUE(weak.refersTo(nullptr));
    EXPECT_TRUE(NSWeak<Track>().refersTo(nullptr));
}

}
