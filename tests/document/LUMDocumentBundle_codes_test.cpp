#include "tests/document/bundle_fixture.h"

namespace {

constexpr std::uint32_t kCreator = fourCharacters("LUMd");
constexpr std::uint32_t kType = fourCharacters("song");

class LUMDocumentBundleCodesTest : public BundleTest {
protected:
    static constexpr const char* kFile = "doc/Contents/PkgInfo";

    /// The codes as another bundle object reads them.
    std::string codes() const
    {
        auto again = LUMDocumentBundle::documentBundleWithPath(at("doc"), false);
        char text[32];
        std::snprintf(text, sizeof text, "%08x %08x", again->creatorCode(), again->typeCode());
        return text;
    }
    std::string codesOf(const std::string& content) const
    {
        put(kFile, content);
        return codes();
    }
};

// Deliberate: see the comment at setCreatorCode.
TEST_F(LUMDocumentBundleCodesTest, DeliberatelyTheFirstSetOfACodeIsLost)
{
    bundle->setTypeCode(kType);
    EXPECT_EQ(bundle->typeCode(), 0u);
    EXPECT_TRUE(isThere(kFile));
    EXPECT_EQ(get(kFile), "");
    bundle->setTypeCode(kType);
    EXPECT_EQ(get(kFile), "song");
}

TEST_F(LUMDocumentBundleCodesTest, AFirstSetAfterLoadingIsKept)
{
    bundle->loadPkgInfo();
    bundle->setCreatorCode(kCreator);
    bundle->setTypeCode(kType);
    EXPECT_EQ(get(kFile), "LUMdsong");
    EXPECT_EQ(codes(), "4c554d64 736f6e67");
}

// Deliberate: the creator stands first, and what stands first is read as the creator.
TEST_F(LUMDocumentBundleCodesTest, DeliberatelyATypeWithoutACreatorIsReadAsTheCreator)
{
    bundle->loadPkgInfo();
    bundle->setTypeCode(kType);
    EXPECT_EQ(get(kFile), "song");
    EXPECT_EQ(codes(), "736f6e67 00000000");
}

TEST_F(LUMDocumentBundleCodesTest, ACodeEndsBeforeItsFirstZeroByte)
{
    bundle->loadPkgInfo();
    bundle->setCreatorCode(0x41420043);
    bundle->setTypeCode(0x44000000);
    EXPECT_EQ(get(kFile), "ABD");
}

TEST_F(LUMDocumentBundleCodesTest, ShortAndLongFilesGiveTheFirstEightBytes)
{
    EXPECT_EQ(codesOf(""), "00000000 00000000");
    EXPECT_EQ(codesOf("abc"), "61626300 00000000");
    EXPECT_EQ(codesOf("abcdefg"), "61626364 65666700");
    EXPECT_EQ(codesOf("abcdefgh"), "61626364 65666768");
    EXPECT_EQ(codesOf("abcdefghij"), "61626364 65666768");
    EXPECT_EQ(codesOf("ab\u00e9d"), "6162c3a9 64000000");
}

TEST_F(LUMDocumentBundleCodesTest, WhatIsNoTextGivesNoCodes)
{
    EXPECT_EQ(codes(), "00000000 00000000");
    EXPECT_EQ(codesOf("\xff\xfe\xfd\xfc"), "00000000 00000000");
    std::filesystem::remove(folder / kFile);
    std::filesystem::create_directory(folder / kFile);
    EXPECT_EQ(codes(), "00000000 00000000");
}

TEST_F(LUMDocumentBundleCodesTest, AFileThatIsFarTooLargeGivesNoCodes)
{
    put(kFile, "LUMdsong");
    std::filesystem::resize_file(folder / kFile, std::uintmax_t { 1 } << 40); // nearly all of it a hole
    EXPECT_EQ(codes(), "00000000 00000000");
}

TEST_F(LUMDocumentBundleCodesTest, DeliberatelyAFileThatCannotBeReadIsWrittenOver)
{
    put(kFile, "\xff\xfe\xfd\xfc");
    bundle->loadPkgInfo();
    bundle->setTypeCode(kType);
    EXPECT_EQ(get(kFile), "song");
}

TEST_F(LUMDocumentBundleCodesTest, DeliberatelyTheCreatorStandsBeforeTheType)
{
    put(kFile, "LUMdsong");
    EXPECT_EQ(bundle->creatorCode(), kCreator);
    EXPECT_EQ(bundle->typeCode(), kType);
}

TEST_F(LUMDocumentBundleCodesTest, ACodeThatIsNoTextLeavesTheFileAsItIs)
{
    put(kFile, "LUMdsong");
    bundle->loadPkgInfo();
    bundle->setTypeCode(0x80000000);
    EXPECT_EQ(get(kFile), "LUMdsong");
    EXPECT_EQ(bundle->typeCode(), 0x80000000);
}

TEST_F(LUMDocumentBundleCodesTest, AreReadOnce)
{
    EXPECT_EQ(bundle->creatorCode(), 0u);
    put(kFile, "LUMdsong");
    EXPECT_EQ(bundle->creatorCode(), 0u);
    bundle->loadPkgInfo();
    EXPECT_EQ(bundle->creatorCode(), kCreator);
}

TEST_F(LUMDocumentBundleCodesTest, AreNeverReadOrWrittenOutside)
{
    put("outside/PkgInfo", "LUMdsong");
    link("../outside", "doc/Contents");
    EXPECT_EQ(bundle->creatorCode(), 0u);
    bundle->setCreatorCode(kType);
    EXPECT_EQ(get("outside/PkgInfo"), "LUMdsong");
}

}
