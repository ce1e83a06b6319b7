#include "LUMPlatform/NSError.h"

#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

namespace {

struct NSErrorTest : ObjectTest {
    NSRef<NSError> bare = NSError::errorWithDomain(NSOSStatusErrorDomain, -43);
    NSRef<NSError> told = NSError::errorWithDomain("Disk", 7,
        NSDictionary::of({ { NSLocalizedDescriptionKey, "It broke." },
            { NSLocalizedFailureReasonErrorKey, "It is old." } }));
};

TEST_F(NSErrorTest, CarriesDomainCodeAndInformation)
{
    EXPECT_THAT(bare->domain(), Equals("NSOSStatusErrorDomain"));
    EXPECT_EQ(bare->code(), -43);
    EXPECT_THAT(bare->userInfo(), Equals(NSDictionary::dictionary()));
    EXPECT_EQ(told->userInfo()->count(), 2u);
}

TEST_F(NSErrorTest, KeepsNoTiesToTheInformationItWasMadeOf)
{
    auto information = NSMutableDictionary::of({ { "a", 1 } });
    auto error = NSError::errorWithDomain("Disk", 7, information);
    information->removeAllObjects();
    EXPECT_EQ(error->userInfo()->count(), 1u);
}

TEST_F(NSErrorTest, HasTheTextsOfItsInformation)
{
    EXPECT_THAT(told->localizedDescription(), Equals("It broke."));
    EXPECT_THAT(told->localizedFailureReason(), Equals("It is old."));
}

TEST_F(NSErrorTest, MakesADescriptionWhereNoneIsGiven)
{
    EXPECT_THAT(bare->localizedDescription(),
        Equals("The operation couldn’t be completed. (NSOSStatusErrorDomain error -43.)"));
    EXPECT_FALSE(bare->localizedFailureReason());
    auto reasoned = NSError::errorWithDomain(
        "Disk", 7, NSDictionary::of({ { NSLocalizedFailureReasonErrorKey, "It is old." } }));
    EXPECT_THAT(reasoned->localizedDescription(), Equals("The operation couldn’t be completed. It is old."));
}

TEST_F(NSErrorTest, IsEqualByAllThree)
{
    EXPECT_THAT(
        bare, Equals(NSError::errorWithDomain("NSOSStatusErrorDomain", -43, NSDictionary::dictionary())));
    EXPECT_EQ(bare->hash(), NSError::errorWithDomain("NSOSStatusErrorDomain", -43)->hash());
    EXPECT_FALSE(bare->isEqual(NSError::errorWithDomain("Other", -43)));
    EXPECT_FALSE(bare->isEqual(NSError::errorWithDomain(NSOSStatusErrorDomain, -36)));
    EXPECT_FALSE(told->isEqual(NSError::errorWithDomain("Disk", 7)));
    EXPECT_FALSE(bare->isEqual(nullptr));
}

TEST_F(NSErrorTest, DescribesItself)
{
    EXPECT_EQ(bare->description()->utf8(),
        "Error Domain=NSOSStatusErrorDomain Code=-43 "
        "\"The operation couldn’t be completed. (NSOSStatusErrorDomain error -43.)\"");
    EXPECT_EQ(told->description()->utf8(),
        "Error Domain=Disk Code=7 \"It broke.\" UserInfo={\n    NSLocalizedDescription = \"It broke.\";\n"
        "    NSLocalizedFailureReason = \"It is old.\";\n}");
}

TEST_F(NSErrorTest, RaisesForANullDomain)
{
    EXPECT_EQ(nameRaisedBy([] { (void)NSError::errorWithDomain(nullptr, 1); }), "NSInvalidArgumentException");
}

TEST_F(NSErrorTest, AnswersDynamicCalls)
{
    EXPECT_EQ(NSSend<NSInteger>(bare, NSSelector("code")), -43);
    EXPECT_THAT(NSSend<NSId>(told, NSSelector("localizedDescription")), Equals("It broke."));
}

}
