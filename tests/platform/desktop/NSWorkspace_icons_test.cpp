#include "LUMPlatform/NSWorkspace.h"

#include "LUMPlatform/NSImage.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "platform/desktop/built_in_icons.h"
#include "tests/fixture.h"
#include "tests/temporary_folder.h"

#include <algorithm>
#include <array>
#include <thread>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// A PNG of 32 by 32 pixels, all of one colour.
constexpr unsigned char kBluePng[] = { 0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D,
    0x49, 0x48, 0x44, 0x52, 0x00, 0x00, 0x00, 0x20, 0x00, 0x00, 0x00, 0x20, 0x08, 0x06, 0x00, 0x00, 0x00,
    0x73, 0x7A, 0x7A, 0xF4, 0x00, 0x00, 0x00, 0x30, 0x49, 0x44, 0x41, 0x54, 0x78, 0xDA, 0xED, 0xCE, 0x21,
    0x01, 0x00, 0x00, 0x08, 0x03, 0x30, 0x2A, 0x50, 0x81, 0xFE, 0xD9, 0xA8, 0x00, 0x31, 0x6E, 0x26, 0xE6,
    0x57, 0x3D, 0x7B, 0x49, 0x25, 0x20, 0x20, 0x20, 0x20, 0x20, 0x20, 0x20, 0x20, 0x20, 0x20, 0x20, 0x20,
    0x20, 0x20, 0x90, 0x0E, 0x3C, 0xE7, 0xDC, 0x80, 0x79, 0x94, 0x06, 0x27, 0x35, 0x00, 0x00, 0x00, 0x00,
    0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82 };
constexpr std::array kBlue { std::byte { 0x11 }, std::byte { 0x22 }, std::byte { 0xEE }, std::byte { 0xFF } };

/// A desktop of the tests' own, with an icon theme that knows folders alone. The desktop's library reads
/// these variables once, so it is there before all tests.
class OwnDesktop {
public:
    OwnDesktop()
    {
        writeFile(inside("config/kdeglobals"), "[Icons]\nTheme=Own\n");
        writeFile(inside("data/icons/Own/index.theme"), "[Icon Theme]\nDirectories=32\n[32]\nSize=32\n");
        writeFile(inside("data/icons/Own/32/folder.png"),
            { reinterpret_cast<const char*>(kBluePng), std::size(kBluePng) });
        setenv("XDG_CONFIG_HOME", (mFolder / "config").c_str(), 1);
        setenv("XDG_DATA_HOME", (mFolder / "data").c_str(), 1);
        setenv("XDG_DATA_DIRS", "/usr/share", 1);
        setenv("XDG_CURRENT_DESKTOP", "KDE", 1);
        setenv("GSETTINGS_BACKEND", "memory", 1);
    }
    const fs::path& path() const { return mFolder.path(); }

private:
    std::string inside(const std::string& name)
    {
        std::string path = mFolder / name;
        fs::create_directories(fs::path(path).parent_path());
        return path;
    }
    TemporaryFolder mFolder;
};
const OwnDesktop ownDesktop;

class NSWorkspaceIconsTest : public ObjectTest {
protected:
    static NSRef<NSImage> iconOf(const std::string& path)
    {
        return NSWorkspace::sharedWorkspace()->iconForFile(path);
    }
    static bool isBlue(const NSImage& icon)
    {
        const auto pixels = icon.pixels();
        return std::ranges::equal(pixels.first(4), kBlue) && std::ranges::equal(pixels.last(4), kBlue);
    }
    static bool isBuiltIn(const NSImage& icon, platform::BuiltInIcon kind)
    {
        return std::ranges::equal(icon.pixels(), platform::builtInIcon(kind)->bytes);
    }
};

TEST_F(NSWorkspaceIconsTest, AFolderHasTheIconOfTheChosenTheme)
{
    const auto icon = iconOf(ownDesktop.path().string());
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->pixelsWide(), 32u);
    EXPECT_EQ(icon->pixelsHigh(), 32u);
    EXPECT_TRUE(isBlue(*icon));
}

TEST_F(NSWorkspaceIconsTest, TheTypeOfFoldersHasTheSameIcon)
{
    EXPECT_TRUE(isBlue(*NSWorkspace::sharedWorkspace()->iconForFileType("'fldr'")));
}

TEST_F(NSWorkspaceIconsTest, WhatNoThemeHasIsShownByASimplePicture)
{
    const auto icon = NSWorkspace::sharedWorkspace()->iconForFileType("no-such-extension");
    ASSERT_TRUE(icon);
    EXPECT_TRUE(isBuiltIn(*icon, platform::BuiltInIcon::Unknown));
}

TEST_F(NSWorkspaceIconsTest, NullHasNoIcon)
{
    EXPECT_FALSE(NSWorkspace::sharedWorkspace()->iconForFile(nullptr));
    EXPECT_FALSE(NSWorkspace::sharedWorkspace()->iconForFileType(nullptr));
}

TEST_F(NSWorkspaceIconsTest, APathOrTypeThatIsNoneIsUnknown)
{
    const NSRef<NSString> withNul = NSString::stringWithCharacters({ u"a\0b", 3 });
    for (const NSRef<NSString>& text : { NSRef<NSString>(""), withNul }) {
        EXPECT_TRUE(
            isBuiltIn(*NSWorkspace::sharedWorkspace()->iconForFile(text), platform::BuiltInIcon::Unknown));
        EXPECT_TRUE(isBuiltIn(
            *NSWorkspace::sharedWorkspace()->iconForFileType(text), platform::BuiltInIcon::Unknown));
    }
}

TEST_F(NSWorkspaceIconsTest, IconsAnswerDynamicCalls)
{
    const auto workspace = NSWorkspace::sharedWorkspace();
    EXPECT_TRUE(NSSend<NSRef<NSImage>>(workspace, NSSelector("iconForFile:"), NSRef<NSString>("/")));
    EXPECT_TRUE(NSSend<NSRef<NSImage>>(workspace, NSSelector("iconForFileType:"), NSRef<NSString>("txt")));
}

/// Only icons that need no look at a file: what the desktop's library locks is hidden from the thread
/// sanitizer.
TEST_F(NSWorkspaceIconsTest, SeveralThreadsMayAskAtOnce)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            for (int round = 0; round < 100; ++round) {
                EXPECT_TRUE(isBlue(*NSWorkspace::sharedWorkspace()->iconForFileType("'fldr'")));
                EXPECT_TRUE(NSWorkspace::sharedWorkspace()->iconForFileType("'APPL'"));
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

}
