#include "LUMPlatform/NSMethodSignature.h"

#include "tests/fixture.h"
#include "tests/platform/objects/track.h"

namespace {

struct NSMethodSignatureTest : ObjectTest { };

TEST_F(NSMethodSignatureTest, ReadsAListOfCodes)
{
    auto signature = NSMethodSignature::signatureWithObjCTypes("i@:@");
    ASSERT_TRUE(signature);
    EXPECT_EQ(signature->numberOfArguments(), 3u);
    EXPECT_STREQ(signature->methodReturnType(), "i");
    EXPECT_EQ(signature->methodReturnLength(), 4u);
    EXPECT_STREQ(signature->getArgumentTypeAtIndex(2), "@");
}

TEST_F(NSMethodSignatureTest, PassesOverTheOffsetsThatCompilersWrite)
{
    auto signature = NSMethodSignature::signatureWithObjCTypes("v24@0:8q16");
    ASSERT_TRUE(signature);
    EXPECT_EQ(signature->numberOfArguments(), 3u);
    EXPECT_EQ(signature->methodReturnLength(), 0u);
}

TEST_F(NSMethodSignatureTest, KnowsTheSizeOfStructures)
{
    auto signature = NSMethodSignature::signatureWithObjCTypes(
        "{CGRect={CGPoint=dd}{CGSize=dd}}@:^{CGRect={CGPoint=dd}{CGSize=dd}}");
    ASSERT_TRUE(signature);
    EXPECT_EQ(signature->methodReturnLength(), 32u);
    EXPECT_EQ(NSMethodSignature::signatureWithObjCTypes("{Mixed=cqs}@:")->methodReturnLength(), 24u);
}

TEST_F(NSMethodSignatureTest, RefusesWhatIsNoSignature)
{
    for (const char* types : { "", "v", "v@", "@:@", "x@:", "v@:{", "v@:^", "v@:{a={b" })
        EXPECT_FALSE(NSMethodSignature::signatureWithObjCTypes(types)) << types;
    EXPECT_FALSE(NSMethodSignature::signatureWithObjCTypes("v@:" + std::string(100'000, '^') + "i"));
    EXPECT_FALSE(NSMethodSignature::signatureWithObjCTypes("v@:" + std::string(100'000, '{')));
}

TEST_F(NSMethodSignatureTest, ComesFromTheMethodThatAnswers)
{
    auto track = NSMake<Track>();
    EXPECT_TRUE(track->methodSignatureForSelector(NSSelector("setTitle:"))
                    ->isEqual(NSMethodSignature::signatureWithObjCTypes("v@:@")));
    EXPECT_TRUE(track->methodSignatureForSelector(NSSelector("isLoud"))
                    ->isEqual(NSMethodSignature::signatureWithObjCTypes("c@:")));
    EXPECT_FALSE(track->methodSignatureForSelector(NSSelector("fly")));
}

TEST_F(NSMethodSignatureTest, RaisesForAnIndexPastTheLast)
{
    EXPECT_THROW(NSMethodSignature::signatureWithObjCTypes("v@:")->getArgumentTypeAtIndex(2), NSException);
}

TEST_F(NSMethodSignatureTest, RefusesCodesThatNoValueHas)
{
    EXPECT_EQ(NSMethodSignature::signatureWithObjCTypes("v@:B"), nullptr);
    EXPECT_EQ(NSMethodSignature::signatureWithObjCTypes("v@:*"), nullptr);
}

}
