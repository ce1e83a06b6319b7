// Archives, copies, and the deprecated alias records.
#include "LUMFoundation/LUMFileRefSubclass.h"

#include "LUMPlatform/NSCoder.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSString.h"
#include "tests/fileref/fileref_fixture.h"

#include <map>

#pragma GCC diagnostic ignored "-Wdeprecated-declarations" // the old calls are tested too

namespace fs = std::filesystem;

namespace {

/// Keeps what an object writes by key, in order, and gives it back.
class KeepingCoder : public NSCoder {
public:
    bool allowsKeyedCoding() const override { return true; }
    void encodeObjectForKey(const NSId& object, const NSRef<NSString>& key) override
    {
        order += key->utf8() + " ";
        values[key->utf8()] = object;
    }
    void drop(const std::string& key) { values.erase("LUMFILEREF_" + key); }

    std::string order;
    std::map<std::string, NSId> values;

protected:
    NSId objectForKey(const NSRef<NSString>& key) override
    {
        const auto found = values.find(key->utf8());
        return found == values.end() ? nullptr : found->second;
    }
    friend class NSInstance<KeepingCoder>;
    KeepingCoder() = default;
    ~KeepingCoder() override = default;
};

class LUMFileRefArchivingTest : public FileRefTest {
protected:
    static NSRef<KeepingCoder> archived(const NSRef<LUMFileRef>& fileRef)
    {
        auto coder = NSMake<KeepingCoder>();
        fileRef->encodeWithCoder(*coder);
        FSReleaseDescriptors();
        return coder;
    }
};

TEST_F(LUMFileRefArchivingTest, WritesAliasRecordPathAndBothUrls)
{
    file("f");
    const auto coder = archived(handle("f"));
    EXPECT_EQ(coder->order,
        "LUMFILEREF_ALIASDATA_KEY LUMFILEREF_FILEPATH_KEY LUMFILEREF_NSURL_KEY "
        "LUMFILEREF_NSURLREFERENCE_KEY ");
    EXPECT_EQ(text(NSCast<NSString>(coder->values["LUMFILEREF_FILEPATH_KEY"])), at("f"));
    EXPECT_EQ(
        text(NSCast<NSURL>(coder->values["LUMFILEREF_NSURL_KEY"])->absoluteString()), "file://" + at("f"));
    EXPECT_TRUE(NSCast<NSURL>(coder->values["LUMFILEREF_NSURLREFERENCE_KEY"])->isFileReferenceURL());
}

TEST_F(LUMFileRefArchivingTest, AnObjectThatIsGoneWritesNothing)
{
    file("f");
    const auto fileRef = handle("f");
    remove("f");
    EXPECT_EQ(archived(fileRef)->order, "");
    EXPECT_EQ(archived(LUMFileRef::initWithURL(nullptr))->order, "");
}

TEST_F(LUMFileRefArchivingTest, AnObjectWhosePathIsNoTextWritesItsRecordAlone)
{
    const auto fileRef = LUMFileRef::fileRefWithFSRef(refTo(file("\xFF\xFE")));
    EXPECT_FALSE(fileRef->path());
    const auto coder = archived(fileRef);
    EXPECT_EQ(coder->order, "LUMFILEREF_ALIASDATA_KEY ");
    EXPECT_TRUE(fileRef->isEqual(LUMFileRef::initWithCoder(*coder)));
}

TEST_F(LUMFileRefArchivingTest, AnArchiveWithoutAKeyGivesNull)
{
    EXPECT_FALSE(LUMFileRef::initWithCoder(*NSMake<KeepingCoder>()));
}

TEST_F(LUMFileRefArchivingTest, WhatIsReadIsEqualToWhatWasWritten)
{
    file("f");
    folder("a");
    EXPECT_TRUE(handle("f")->isEqual(LUMFileRef::initWithCoder(*archived(handle("f")))));
    EXPECT_TRUE(handle("a")->isEqual(LUMFileRef::initWithCoder(*archived(handle("a")))));
}

TEST_F(LUMFileRefArchivingTest, FindsAFileThatWasMovedMeanwhileByRecordOrByReferenceUrl)
{
    folder("a");
    file("f");
    const auto coder = archived(handle("f"));
    rename("f", "a/g");
    rename("a", "b");
    EXPECT_EQ(pathOf(LUMFileRef::initWithCoder(*coder)), at("b/g"));
    coder->drop("ALIASDATA_KEY");
    EXPECT_EQ(pathOf(LUMFileRef::initWithCoder(*coder)), at("b/g"));
}

TEST_F(LUMFileRefArchivingTest, FallsBackToThePath)
{
    file("f");
    const auto coder = archived(handle("f"));
    for (const std::string key : { "ALIASDATA_KEY", "NSURL_KEY", "NSURLREFERENCE_KEY" })
        coder->drop(key);
    EXPECT_EQ(pathOf(LUMFileRef::initWithCoder(*coder)), at("f"));
    remove("f");
    EXPECT_FALSE(LUMFileRef::initWithCoder(*coder));
}

TEST_F(LUMFileRefArchivingTest, ARecordThatIsNoneIsPassedOver)
{
    file("f");
    const auto coder = archived(handle("f"));
    coder->values["LUMFILEREF_ALIASDATA_KEY"] = NSData::dataWithBytes("broken", 6);
    EXPECT_EQ(pathOf(LUMFileRef::initWithCoder(*coder)), at("f"));
}

// Deliberate: the URL decides only whether the reference URL is looked at once more.
TEST_F(LUMFileRefArchivingTest, DeliberatelyAUrlWithoutRecordAndReferenceGivesAHandleOnNothing)
{
    file("f");
    const auto coder = archived(handle("f"));
    coder->drop("ALIASDATA_KEY");
    coder->drop("NSURLREFERENCE_KEY");
    const auto fileRef = LUMFileRef::initWithCoder(*coder);
    ASSERT_TRUE(fileRef);
    EXPECT_FALSE(*fileRef->fsRef());
    EXPECT_EQ(pathOf(fileRef), "(null)");
}

TEST_F(LUMFileRefArchivingTest, AHandleOnNothingHasNothingOfALinkThatDangles)
{
    file("f");
    link("alias", "f");
    const auto coder = archived(linkHandle("alias"));
    coder->drop("NSURLREFERENCE_KEY");
    remove("f");
    const auto fileRef = LUMFileRef::initWithCoder(*coder);
    ASSERT_TRUE(fileRef);
    EXPECT_FALSE(*fileRef->fsRef());
}

TEST_F(LUMFileRefArchivingTest, AKeyedArchiveBringsBackEachHandleOfAList)
{
    file("f");
    folder("a");
    const auto f = handle("f");
    const auto data = NSKeyedArchiver::archivedDataWithRootObject(NSArray::of(f, handle("a"), f));
    rename("f", "a/f");
    rename("a", "b");
    const auto again = NSCast<NSArray>(NSKeyedUnarchiver::unarchiveObjectWithData(data));
    EXPECT_EQ(names(again), "b f f ");
    EXPECT_EQ(again->objectAtIndex(0), again->objectAtIndex(2)) << "one object, written once";
}

TEST_F(LUMFileRefArchivingTest, AnArchiveOfOtherValuesUnderItsKeysRaises)
{
    auto coder = NSMake<KeepingCoder>();
    coder->values["LUMFILEREF_ALIASDATA_KEY"] = "text";
    EXPECT_THROW((void)LUMFileRef::initWithCoder(*coder), NSException);
}

TEST_F(LUMFileRefArchivingTest, ACopyIsAHandleOfItsOwnOnTheSameObject)
{
    file("f");
    link("alias", "f");
    const auto fileRef = handle("alias");
    fileRef->lock();
    const auto copy = NSCast<LUMFileRef>(fileRef->copy());
    fileRef->unlock();
    ASSERT_TRUE(copy);
    EXPECT_NE(copy.get(), fileRef.get());
    EXPECT_TRUE(copy->isEqual(fileRef));
    EXPECT_FALSE(copy->aliasFileRef());
    copy->lock();
    copy->unlock();
    EXPECT_TRUE(copy->renameWithName("g"));
    EXPECT_EQ(pathOf(fileRef), at("g"));
    remove("g");
    EXPECT_FALSE(fileRef->copy());
}

// Deliberate: every step of reading an archive follows links.
TEST_F(LUMFileRefArchivingTest, DeliberatelyTheCopyOfAHandleOnALinkIsOnItsTarget)
{
    file("f");
    link("alias", "f");
    const auto copy = NSCast<LUMFileRef>(linkHandle("alias")->copy());
    EXPECT_EQ(pathOf(copy), at("f"));
    EXPECT_EQ(pathOf(copy->aliasFileRef()), at("alias"));
}

TEST_F(LUMFileRefArchivingTest, AliasDataLeadsBack)
{
    folder("a");
    file("f");
    const auto data = handle("f")->aliasData();
    rename("f", "a/g");
    NSRef<NSError> error;
    EXPECT_EQ(pathOf(LUMFileRef::fileRefWithAliasData(data, &error)), at("a/g"));
    EXPECT_EQ(pathOf(LUMFileRef::initWithAliasData(data)), at("a/g"));
    EXPECT_FALSE(error);
    remove("a");
    EXPECT_FALSE(LUMFileRef::fileRefWithAliasData(data, &error));
    EXPECT_EQ(codeOf(error), -43);
}

TEST_F(LUMFileRefArchivingTest, AliasDataThatIsNoneGivesTheStatusOfItsResolution)
{
    NSRef<NSError> error;
    EXPECT_FALSE(LUMFileRef::fileRefWithAliasData(nullptr, &error));
    EXPECT_FALSE(error);
    EXPECT_FALSE(LUMFileRef::fileRefWithAliasData(NSData::dataWithBytes("x", 1), &error));
    EXPECT_EQ(codeOf(error), -50);
    EXPECT_FALSE(LUMFileRef::initWithURL(nullptr)->aliasData());
}

TEST_F(LUMFileRefArchivingTest, OldCallsWorkWithoutAnError)
{
    folder("a");
    file("a/f");
    EXPECT_EQ(handle("a")->children()->count(), 1u);
    FSSpec spec;
    EXPECT_EQ(handle("a/f")->getFSSpec(&spec), 0);
    EXPECT_EQ(spec.name[0], 1);
    EXPECT_EQ(handle("a/f")->getFSSpec(nullptr), -50);
    EXPECT_EQ(LUMFileRef::initWithURL(nullptr)->getFSSpec(&spec), -43);
}

}
