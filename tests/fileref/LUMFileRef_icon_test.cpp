#include "tests/fileref/fileref_fixture.h"

#include "LUMPlatform/NSImage.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSWorkspace.h"

namespace {

class LUMFileRefIconTest : public FileRefTest {
protected:
    static bool isSame(const NSRef<NSImage>& one, const NSRef<NSImage>& other)
    {
        return one && other && std::ranges::equal(one->pixels(), other->pixels());
    }
};

TEST_F(LUMFileRefIconTest, IsTheOneTheWorkspaceHasForThePath)
{
    file("take.wav");
    folder("takes");
    for (const std::string name : { "take.wav", "takes" })
        EXPECT_TRUE(isSame(handle(name)->icon(), NSWorkspace::sharedWorkspace()->iconForFile(at(name))))
            << name;
    EXPECT_FALSE(isSame(handle("take.wav")->icon(), handle("takes")->icon()));
}

TEST_F(LUMFileRefIconTest, IsThatOfTheNameItHasNow)
{
    file("take.wav");
    const auto fileRef = handle("take.wav");
    ASSERT_TRUE(fileRef->renameWithName("take.unknown-type"));
    EXPECT_TRUE(
        isSame(fileRef->icon(), NSWorkspace::sharedWorkspace()->iconForFile(at("take.unknown-type"))));
}

TEST_F(LUMFileRefIconTest, IsNullWithoutAPath)
{
    file("gone");
    const auto fileRef = handle("gone");
    std::filesystem::remove(at("gone"));
    EXPECT_FALSE(fileRef->icon());
}

TEST_F(LUMFileRefIconTest, AnswersDynamicCalls)
{
    EXPECT_TRUE(NSSend<NSRef<NSImage>>(here(), NSSelector("icon")));
}

}
