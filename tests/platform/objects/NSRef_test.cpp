#include "LUMPlatform/NSRef.h"

#include "tests/fixture.h"
#include "tests/platform/objects/track.h"

#include <sstream>

namespace {

struct NSRefTest : ObjectTest { };

TEST_F(NSRefTest, IsNullUntilSet)
{
    NSRef<Track> track;
    EXPECT_FALSE(track);
    EXPECT_TRUE(track == nullptr);
}

TEST_F(NSRefTest, EndsTheObjectWithItsLastReference)
{
    int ended = 0;
    auto track = NSMake<Track>();
    track->atEnd = [&] { ++ended; };
    auto second = track;
    track = nullptr;
    EXPECT_EQ(ended, 0);
    second = nullptr;
    EXPECT_EQ(ended, 1);
}

TEST_F(NSRefTest, SurvivesAssigningItsOwnSuccessor)
{
    auto head = NSMake<Track>("a");
    head->setNext(NSMake<Track>("b"));
    head = head->next();
    EXPECT_EQ(head->title()->utf8(), "b");
}

TEST_F(NSRefTest, SurvivesAssigningItself)
{
    auto track = NSMake<Track>("a");
    auto& same = track;
    track = same;
    EXPECT_EQ(track->title()->utf8(), "a");
}

TEST_F(NSRefTest, SwapsWithAnother)
{
    auto a = NSMake<Track>("a");
    NSRef<Track> none;
    swap(a, none);
    EXPECT_FALSE(a);
    EXPECT_EQ(none->title()->utf8(), "a");
}

TEST_F(NSRefTest, IsEmptyBeforeItsObjectDies)
{
    auto holder = std::make_unique<NSRef<Track>>(NSMake<Track>());
    bool empty = false;
    NSRef<Track>* slot = holder.get();
    (*holder)->atEnd = [&empty, slot] { empty = !*slot; };
    holder.reset();
    EXPECT_TRUE(empty);
}

TEST_F(NSRefTest, ConvertsToBaseAndProtocolAndBack)
{
    NSRef<Track> track = NSMake<LoudTrack>();
    NSRef<Playing> playing = track;
    NSId object = playing;
    EXPECT_TRUE(object == track);
    EXPECT_EQ(playing->play(), 100);
    EXPECT_TRUE(NSCast<LoudTrack>(object));
}

TEST_F(NSRefTest, CastsToTheClassTheObjectWasMadeAsAndToThoseAboveIt)
{
    NSId loud = NSMake<LoudTrack>();
    EXPECT_EQ(NSCast<LoudTrack>(loud), loud);
    EXPECT_EQ(NSCast<Track>(loud), loud);
    EXPECT_FALSE(NSCast<LoudTrack>(NSId(NSMake<Track>())));
}

TEST_F(NSRefTest, CastsToNullWhenTheObjectIsNoSuchThing)
{
    NSId plain = NSMake<NSObject>();
    EXPECT_FALSE(NSCast<Track>(plain));
    EXPECT_FALSE(NSCast<Playing>(plain));
    EXPECT_FALSE(NSCast<Track>(NSId()));
}

TEST_F(NSRefTest, KeepsTheObjectThroughAProtocolReferenceAlone)
{
    NSRef<Playing> playing = NSMake<Track>();
    auto copy = playing;
    playing = nullptr;
    EXPECT_EQ(copy->play(), 1);
}

TEST_F(NSRefTest, IsMadeFromPlainText)
{
    NSRef<NSString> text = "abc";
    EXPECT_EQ(text->utf8(), "abc");
    const char* none = nullptr;
    NSRef<NSString> null = none;
    EXPECT_FALSE(null);
}

TEST_F(NSRefTest, ComparesByIdentity)
{
    NSRef<NSString> a = "abc";
    NSRef<NSString> b = "abc";
    EXPECT_FALSE(a == b);
    EXPECT_TRUE(NSEqual(a, b));
    EXPECT_TRUE(NSEqual(nullptr, nullptr));
    EXPECT_FALSE(NSEqual(a, nullptr));
}

TEST_F(NSRefTest, PrintsTheDescriptionOrNull)
{
    std::ostringstream text;
    text << NSRef<NSString>("abc") << NSRef<Track>();
    EXPECT_EQ(text.str(), "abc(null)");
}

}
