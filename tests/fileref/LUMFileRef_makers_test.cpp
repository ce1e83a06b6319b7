// How handles are made, and what they are when that fails.
#include "tests/fileref/fileref_fixture.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSFileManager.h"

namespace {

class LUMFileRefMakersTest : public FileRefTest {
protected:
    NSRef<NSError> mError;
};

TEST_F(LUMFileRefMakersTest, APathGivesAHandle)
{
    file("f");
    const auto fileRef = LUMFileRef::fileRefWithPath(at("f"), &mError);
    EXPECT_EQ(pathOf(fileRef), at("f"));
    EXPECT_FALSE(mError);
    EXPECT_EQ(pathOf(LUMFileRef::initWithPath(at("f"))), at("f"));
}

TEST_F(LUMFileRefMakersTest, ALeadingTildeIsExpanded)
{
    EXPECT_TRUE(LUMFileRef::fileRefWithPath("~"));
    EXPECT_FALSE(LUMFileRef::fileRefWithPath("~nobody-of-this-name/f"));
}

TEST_F(LUMFileRefMakersTest, AMissingFileIsCode43AndANullPathCode50)
{
    EXPECT_FALSE(LUMFileRef::fileRefWithPath(at("missing"), &mError));
    EXPECT_EQ(codeOf(mError), -43);
    EXPECT_EQ(text(mError->domain()), NSOSStatusErrorDomain.text());
    EXPECT_FALSE(LUMFileRef::fileRefWithPath(nullptr, &mError));
    EXPECT_EQ(codeOf(mError), -50);
    EXPECT_FALSE(LUMFileRef::fileRefWithPath("", &mError));
    EXPECT_EQ(codeOf(mError), -43);
    EXPECT_FALSE(LUMFileRef::fileRefWithPath(nullptr));
}

TEST_F(LUMFileRefMakersTest, HalfASurrogatePairNamesNoFile)
{
    file("a\xEF\xBF\xBD"
         "b"); // with the character that stands in for such a half
    const auto path = NSString::stringWithFormat("%@/a%Cb", mFolder.string(), 0xD800);
    EXPECT_FALSE(LUMFileRef::fileRefWithPath(path, &mError));
    EXPECT_EQ(codeOf(mError), -43);
}

TEST_F(LUMFileRefMakersTest, SuccessStoresNullInTheError)
{
    EXPECT_FALSE(LUMFileRef::fileRefWithPath(at("missing"), &mError));
    EXPECT_TRUE(mError);
    EXPECT_TRUE(LUMFileRef::fileRefWithPath(mFolder.string(), &mError));
    EXPECT_FALSE(mError);
}

TEST_F(LUMFileRefMakersTest, AnAliasIsFollowedAndRemembered)
{
    file("f");
    link("alias", at("f"));
    const auto fileRef = handle("alias");
    EXPECT_EQ(pathOf(fileRef), at("f"));
    EXPECT_FALSE(fileRef->isAlias());
    EXPECT_EQ(pathOf(fileRef->aliasFileRef()), at("alias"));
    EXPECT_TRUE(fileRef->aliasFileRef()->isAlias());
    EXPECT_FALSE(handle("f")->aliasFileRef());
}

TEST_F(LUMFileRefMakersTest, AnAliasIsNotFollowedUnlessThatIsWanted)
{
    file("f");
    link("alias", at("f"));
    const auto fileRef = LUMFileRef::initWithPathResolveAlias(at("alias"), false);
    EXPECT_EQ(pathOf(fileRef), at("alias"));
    EXPECT_TRUE(fileRef->isAlias());
    EXPECT_FALSE(fileRef->aliasFileRef());
}

TEST_F(LUMFileRefMakersTest, ABrokenAliasFailsWithTheStatusOfItsResolution)
{
    link("dangling", "missing");
    EXPECT_FALSE(LUMFileRef::fileRefWithPath(at("dangling"), &mError));
    EXPECT_EQ(codeOf(mError), -43);
    link("a", "b");
    link("b", "a");
    EXPECT_FALSE(LUMFileRef::fileRefWithPath(at("a"), &mError));
    EXPECT_EQ(codeOf(mError), -1043);
    const auto itself = LUMFileRef::fileRefWithPathResolveAlias(at("dangling"), false, &mError);
    EXPECT_EQ(pathOf(itself), at("dangling"));
    EXPECT_FALSE(mError);
    EXPECT_FALSE(itself->isAlias());
}

TEST_F(LUMFileRefMakersTest, AReferenceGivesAHandle)
{
    file("f");
    link("alias", "f");
    const FSRef ref = refTo(at("alias"));
    EXPECT_EQ(pathOf(LUMFileRef::fileRefWithFSRef(ref)), at("f"));
    EXPECT_EQ(pathOf(LUMFileRef::initWithFSRef(ref)), at("f"));
    EXPECT_EQ(pathOf(LUMFileRef::fileRefWithFSRefResolveAlias(ref, false)), at("alias"));
    EXPECT_EQ(pathOf(LUMFileRef::initWithFSRefResolveAlias(ref, false)), at("alias"));
    EXPECT_FALSE(LUMFileRef::fileRefWithFSRef(FSRef(), &mError));
    EXPECT_EQ(codeOf(mError), -43);
    EXPECT_EQ(pathOf(LUMFileRef::fileRefWithFSRefResolveAlias(FSRef(), false, &mError)), "(null)");
    EXPECT_FALSE(mError);
}

TEST_F(LUMFileRefMakersTest, AFileUrlGivesAHandleOnItsPath)
{
    file("a b");
    link("alias", "a b");
    const auto url = NSURL::fileURLWithPath(at("a b"));
    EXPECT_EQ(pathOf(LUMFileRef::fileRefWithURL(url, &mError)), at("a b"));
    EXPECT_EQ(pathOf(LUMFileRef::initWithURL(NSURL::fileURLWithPath(at("alias")))), at("a b"));
    EXPECT_EQ(pathOf(LUMFileRef::fileRefWithURL(url->fileReferenceURL())), at("a b"));
    EXPECT_FALSE(LUMFileRef::fileRefWithURL(NSURL::fileURLWithPath(at("missing")), &mError));
    EXPECT_EQ(codeOf(mError), -43);
}

// Deliberate: callers test the error, not the result.
TEST_F(LUMFileRefMakersTest, DeliberatelyAUrlThatIsNoFileUrlGivesCode4AndAHandleOnNothing)
{
    const auto fileRef = LUMFileRef::initWithURL(NSURL::URLWithString("http://example.org/f"), &mError);
    EXPECT_TRUE(fileRef);
    EXPECT_EQ(codeOf(mError), 4);
    EXPECT_FALSE(*fileRef->fsRef());
    mError = nullptr;
    EXPECT_TRUE(LUMFileRef::fileRefWithURL(nullptr, &mError));
    EXPECT_EQ(codeOf(mError), 4);
}

TEST_F(LUMFileRefMakersTest, EveryOperationOnAHandleOnNothingIsSafe)
{
    file("f");
    const auto nothing = LUMFileRef::initWithURL(nullptr);
    const auto other = handle("f");
    EXPECT_EQ(pathOf(nothing), "(null)");
    EXPECT_FALSE(nothing->fileExists());
    EXPECT_FALSE(nothing->url());
    EXPECT_FALSE(nothing->name());
    EXPECT_FALSE(nothing->baseName());
    EXPECT_FALSE(nothing->pathExtension());
    EXPECT_EQ(text(nothing->displayName()), "");
    EXPECT_FALSE(nothing->isAlias());
    EXPECT_FALSE(nothing->aliasFileRef());
    EXPECT_FALSE(nothing->isDirectory());
    EXPECT_FALSE(nothing->isInTrash());
    EXPECT_FALSE(nothing->isDescendentOf(other));
    EXPECT_FALSE(other->isDescendentOf(nothing));
    EXPECT_FALSE(nothing->isChildOf(other));
    EXPECT_FALSE(nothing->isParentOf(other));
    EXPECT_FALSE(nothing->parent());
    EXPECT_FALSE(nothing->childrenError(&mError));
    EXPECT_FALSE(nothing->childEnumerator());
    EXPECT_FALSE(nothing->childWithName("f", &mError));
    EXPECT_EQ(codeOf(mError), -120);
    EXPECT_FALSE(nothing->createChildWithName("f", false));
    EXPECT_FALSE(nothing->createChildIfNeededWithName("f", true));
    EXPECT_FALSE(nothing->renameWithName("g", &mError));
    EXPECT_EQ(codeOf(mError), -43);
    EXPECT_FALSE(nothing->attributes());
    nothing->setAttributes(nullptr);
    EXPECT_EQ(nothing->fileInfo(), FileInfo());
    EXPECT_EQ(nothing->setFileInfo(FileInfo()), -43);
    EXPECT_EQ(nothing->hash(), 0u);
    EXPECT_TRUE(nothing->isEqual(nothing));
    EXPECT_TRUE(nothing->isEqual(LUMFileRef::initWithURL(nullptr)));
    EXPECT_FALSE(nothing->isEqual(other));
    EXPECT_FALSE(other->isEqual(nothing));
    EXPECT_EQ(nothing->compare(other), NSOrderedAscending);
    nothing->lock();
    nothing->unlock();
    EXPECT_EQ(text(nothing->description()).find(','), std::string::npos);
}

}
