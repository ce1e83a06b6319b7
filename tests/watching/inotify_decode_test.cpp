#include "tests/watching/inotify_bytes.h"
#include "watching/inotify_decode.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <string>

namespace lum {

TEST(InotifyDecodeTest, FindsNoEventInNothing)
{
    EXPECT_TRUE(decodeInotify({}).empty());
}

TEST(InotifyDecodeTest, DecodesEveryEventOfOneRead)
{
    const auto bytes = inotifyBytes(1, inotify::kModify) + inotifyBytes(2, inotify::kCreate, "child")
        + inotifyBytes(-1, inotify::kOverflow);
    const std::vector<InotifyEvent> expected {
        { 1, inotify::kModify, 0, "" },
        { 2, inotify::kCreate, 0, "child" },
        { -1, inotify::kOverflow, 0, "" },
    };
    EXPECT_EQ(decodeInotify(bytes), expected);
}

TEST(InotifyDecodeTest, KeepsTheCookieThatJoinsARename)
{
    const auto bytes =
        inotifyBytes(1, inotify::kMovedFrom, "a", 77) + inotifyBytes(1, inotify::kMovedTo, "b", 77);
    const auto events = decodeInotify(bytes);
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].cookie, 77U);
    EXPECT_EQ(events[1].cookie, 77U);
}

TEST(InotifyDecodeTest, CutsThePaddingOffANameOfAnyLength)
{
    for (std::size_t length = 1; length <= 255; ++length) {
        const std::string name(length, 'n');
        const auto bytes = inotifyBytes(1, inotify::kDelete, name);
        const auto events = decodeInotify(bytes);
        ASSERT_EQ(events.size(), 1U);
        ASSERT_EQ(events[0].name, name);
    }
}

TEST(InotifyDecodeTest, TakesANameThatFillsItsPlaceToTheEnd)
{
    auto bytes = inotifyBytes(1, inotify::kCreate, "exactly-15-long");
    bytes.back() = std::byte { 'x' };
    EXPECT_EQ(decodeInotify(bytes).at(0).name, "exactly-15-longx");
}

TEST(InotifyDecodeTest, LeavesOutAnEventThatIsCutOff)
{
    const auto first = inotifyBytes(1, inotify::kModify);
    const auto both = first + inotifyBytes(2, inotify::kCreate, "child");
    for (std::size_t length = first.size(); length < both.size(); ++length) {
        const auto events = decodeInotify(std::span(both).first(length));
        ASSERT_EQ(events.size(), 1U) << length;
        ASSERT_EQ(events[0].watch, 1);
    }
}

TEST(InotifyDecodeTest, StopsAtALengthThatReachesPastTheEnd)
{
    auto bytes = inotifyBytes(1, inotify::kModify) + inotifyBytes(2, inotify::kModify);
    bytes[12] = bytes[13] = bytes[14] = bytes[15] = std::byte { 0xff };
    EXPECT_TRUE(decodeInotify(bytes).empty());
}

RC_GTEST_PROP(InotifyDecodeTest, ReadsNoMoreThanItIsGiven, (const std::vector<std::uint8_t>& noise))
{
    const auto events = decodeInotify(std::as_bytes(std::span(noise)));
    std::size_t used = 0;
    for (const InotifyEvent& event : events)
        used += 16 + event.name.size();
    RC_ASSERT(used <= noise.size());
}

TEST(InotifyDecodeTest, FindsTheLiveWatchesInAscendingOrder)
{
    const char* fdinfo = "pos:\t0\nflags:\t02004000\nmnt_id:\t15\nino:\t1057\n"
                         "inotify wd:1f ino:9e7e sdev:800013 mask:800afce ignored_mask:0 fhandle-bytes:8\n"
                         "inotify wd:2 ino:a111 sdev:800013 mask:800afff ignored_mask:0 fhandle-bytes:8\n"
                         "inotify wd:1 ino:6b149 sdev:800013 mask:800afff ignored_mask:0 fhandle-bytes:8\n";
    EXPECT_EQ(decodeInotifyWatches(fdinfo), (std::vector<int> { 1, 2, 31 }));
}

TEST(InotifyDecodeTest, SkipsLinesThatTellOfNoWatch)
{
    EXPECT_EQ(decodeInotifyWatches(
                  "inotify wd:\ninotify wd:xyz\ninotify wd:-5\ninotify wd:ffffffffff\n\n wd:3\ninotify wd:4"),
        std::vector<int> { 4 });
}

}
