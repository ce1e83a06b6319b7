#include "platform/desktop/built_in_icons.h"

#include <gtest/gtest.h>
#include <set>

namespace {

using platform::BuiltInIcon;

constexpr BuiltInIcon kAll[] = { BuiltInIcon::File, BuiltInIcon::Folder, BuiltInIcon::Application,
    BuiltInIcon::Unknown };

TEST(BuiltInIconsTest, AreThirtyTwoPixelsOnEachSide)
{
    for (BuiltInIcon kind : kAll) {
        const auto icon = platform::builtInIcon(kind);
        EXPECT_EQ(icon->width, 32u);
        EXPECT_EQ(icon->height, 32u);
        EXPECT_EQ(icon->bytes.size(), 32u * 32 * 4);
    }
}

TEST(BuiltInIconsTest, AreToldApart)
{
    std::set<std::vector<std::byte>> pictures;
    for (BuiltInIcon kind : kAll)
        pictures.insert(platform::builtInIcon(kind)->bytes);
    EXPECT_EQ(pictures.size(), 4u);
}

TEST(BuiltInIconsTest, AreTheSameEachTime)
{
    EXPECT_EQ(platform::builtInIcon(BuiltInIcon::File), platform::builtInIcon(BuiltInIcon::File));
}

TEST(BuiltInIconsTest, AreClearAtTheCornersAndSolidInside)
{
    const auto opacity = [](const platform::Pixels& icon, std::size_t x, std::size_t y) {
        return icon.bytes[(y * icon.width + x) * 4 + 3];
    };
    for (BuiltInIcon kind : kAll) {
        const auto icon = platform::builtInIcon(kind);
        EXPECT_EQ(opacity(*icon, 0, 0), std::byte { 0 });
        EXPECT_EQ(opacity(*icon, 31, 31), std::byte { 0 });
        EXPECT_EQ(opacity(*icon, 16, 16), std::byte { 0xFF });
    }
}

}
