#include "LUMPlatform/NSObject.h"

#include "LUMPlatform/NSNull.h"
#include "tests/fixture.h"
#include "tests/platform/objects/track.h"

#include <gmock/gmock.h>

#include <thread>

namespace {

struct NSObjectTest : ObjectTest { };

template<typename T>
concept OnTheStack = requires
{
    T {};
};
static_assert(!OnTheStack<NSObject>, "objects are made by NSMake alone");
static_assert(!std::is_destructible_v<NSObject>);

TEST_F(NSObjectTest, IsEqualToItselfAlone)
{
    auto a = NSMake<NSObject>();
    auto b = NSMake<NSObject>();
    EXPECT_TRUE(a->isEqual(a));
    EXPECT_FALSE(a->isEqual(b));
    EXPECT_FALSE(a->isEqual(nullptr));
}

TEST_F(NSObjectTest, DescribesItselfByClassAndAddress)
{
    EXPECT_THAT(NSMake<Track>()->description()->utf8(), testing::MatchesRegex("<Track: 0x[0-9a-f]+>"));
}

TEST_F(NSObjectTest, RaisesWhenAClassThatCannotBeCopiedIsCopied)
{
    auto object = NSMake<Track>();
    EXPECT_THROW((void)object->copy(), NSException);
    EXPECT_THROW((void)object->mutableCopy(), NSException);
}

TEST_F(NSObjectTest, NamesClassSelectorAndAddressOfAnUnrecognizedSelector)
{
    auto track = NSMake<Track>();
    try {
        track->doesNotRecognizeSelector(NSSelector("fly:"));
        FAIL();
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name()->utf8(), "NSInvalidArgumentException");
        EXPECT_THAT(exception.reason()->utf8(),
            testing::MatchesRegex("-\\[Track fly:\\]: unrecognized selector sent to instance 0x[0-9a-f]+"));
    }
}

TEST_F(NSObjectTest, KnowsItsClassAndThoseAbove)
{
    NSId loud = NSMake<LoudTrack>();
    EXPECT_EQ(loud->isa().name(), "LoudTrack");
    EXPECT_TRUE(loud->isKindOfClass(Track::classObject()));
    EXPECT_TRUE(loud->isKindOfClass(NSObject::classObject()));
    EXPECT_FALSE(NSMake<Track>()->isKindOfClass(LoudTrack::classObject()));
}

TEST_F(NSObjectTest, FreesAMillionNestedObjectsWithoutDeepRecursion)
{
    auto head = NSMake<Track>();
    for (int i = 0; i < 1'000'000; ++i) {
        auto next = NSMake<Track>();
        next->setNext(head);
        head = next;
    }
    head = nullptr;
    SUCCEED(); // the fixture counts them
}

TEST_F(NSObjectTest, EndsOnceWhenManyThreadsDropTheirReferences)
{
    std::atomic<int> ended = 0;
    auto track = NSMake<Track>();
    track->atEnd = [&] { ++ended; };
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([track] {
            for (int round = 0; round < 1000; ++round)
                NSRef<Track> copy = track;
        });
    track = nullptr;
    for (auto& thread : threads)
        thread.join();
    threads.clear();
    EXPECT_EQ(ended, 1);
}

TEST_F(NSObjectTest, HasOneNullObject)
{
    EXPECT_TRUE(NSNull::null() == NSNull::null());
    EXPECT_EQ(NSNull::null()->description()->utf8(), "<null>");
    EXPECT_TRUE(NSNull::null()->copy() == NSNull::null());
}

}
