#include "LUMFoundation/LUMFileRefSubclass.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "tests/fileref/fileref_fixture.h"

namespace {

class Take : public LUMFileRefSubclass<Take> {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("Take", &LUMFileRef::classObject(), {});
        return type;
    }
    int channels = 2;

protected:
    Take() = default;
    ~Take() override = default;
};

class StereoTake : public LUMFileRefSubclass<StereoTake, Take> {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("StereoTake", &Take::classObject(), {});
        return type;
    }

protected:
    StereoTake() = default;
    ~StereoTake() override = default;
};

class LUMFileRefSubclassTest : public FileRefTest { };

TEST_F(LUMFileRefSubclassTest, ClassOperationsMakeItsOwnObjects)
{
    file("f");
    const NSRef<Take> made[] = {
        Take::fileRefWithPath(at("f")),
        Take::fileRefWithPathResolveAlias(at("f"), false),
        Take::fileRefWithFSRef(refTo(at("f"))),
        Take::fileRefWithFSRefResolveAlias(refTo(at("f")), false),
        Take::fileRefWithURL(NSURL::fileURLWithPath(at("f"))),
        Take::initWithPath(at("f")),
        Take::initWithFSRef(refTo(at("f"))),
        Take::initWithURL(NSURL::fileURLWithPath(at("f"))),
    };
    for (const auto& take : made) {
        ASSERT_TRUE(take);
        EXPECT_EQ(&take->isa(), &Take::classObject());
        EXPECT_EQ(take->channels, 2);
        EXPECT_EQ(pathOf(take), at("f"));
    }
}

TEST_F(LUMFileRefSubclassTest, ASubclassOfASubclassMakesItsOwn)
{
    const NSRef<StereoTake> take = StereoTake::fileRefWithPath(mFolder.string());
    EXPECT_EQ(&take->isa(), &StereoTake::classObject());
}

TEST_F(LUMFileRefSubclassTest, FailsAsTheClassItselfDoes)
{
    NSRef<NSError> error;
    EXPECT_FALSE(Take::fileRefWithPath(at("missing"), &error));
    EXPECT_EQ(codeOf(error), -43);
    const NSRef<Take> nothing = Take::fileRefWithURL(nullptr, &error);
    EXPECT_TRUE(nothing);
    EXPECT_EQ(codeOf(error), 4);
}

TEST_F(LUMFileRefSubclassTest, CopiesAndArchivesMakeItsOwnOnceItIsRegistered)
{
    file("f");
    const NSRef<StereoTake> unregistered = StereoTake::fileRefWithPath(at("f"));
    EXPECT_THROW((void)unregistered->copy(), NSException);
    NSCoding::registerClass<Take>();
    const NSRef<Take> take = Take::fileRefWithPath(at("f"));
    EXPECT_TRUE(take->isEqual(take->copy()));
    const auto data = NSKeyedArchiver::archivedDataWithRootObject(take);
    EXPECT_TRUE(take->isEqual(NSKeyedUnarchiver::unarchiveObjectWithData(data)));
}

TEST_F(LUMFileRefSubclassTest, AnObjectOfAnotherClassIsNotEqual)
{
    file("f");
    const NSRef<Take> take = Take::fileRefWithPath(at("f"));
    EXPECT_EQ(take->compare(handle("f")), NSOrderedSame);
    EXPECT_FALSE(take->isEqual(handle("f")));
    EXPECT_FALSE(handle("f")->isEqual(take));
    EXPECT_TRUE(take->isEqual(Take::fileRefWithPath(at("f"))));
}

}
