#include "LUMFoundation/LUMArray.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "core/compare_objects.h"
#include "tests/fixture.h"
#include "tests/raised_by.h"

#include <algorithm>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

namespace {

const NSSelector kCompare("compare:");

struct LUMArraySearchTest : ObjectTest {
    NSRef<NSArray> odd = NSArray::of(1, 3, 5);
};

TEST_F(LUMArraySearchTest, BsearchSelectorFindsAnElement)
{
    EXPECT_EQ(LUMArray::bsearchSelector(odd, 3, kCompare), 1u);
}

TEST_F(LUMArraySearchTest, BsearchSelectorFindsTheFirstGreaterElement)
{
    EXPECT_EQ(LUMArray::bsearchSelector(odd, 4, kCompare), 2u);
    EXPECT_EQ(LUMArray::bsearchSelector(odd, 0, kCompare), 0u);
}

TEST_F(LUMArraySearchTest, BsearchSelectorIsTheCountForAGreaterValue)
{
    EXPECT_EQ(LUMArray::bsearchSelector(odd, 9, kCompare), 3u);
}

TEST_F(LUMArraySearchTest, BsearchSelectorOfAnEmptyArrayIsZero)
{
    EXPECT_EQ(LUMArray::bsearchSelector(NSArray::array(), 3, NSSelector("noSuchMethod:")), 0u);
}

TEST_F(LUMArraySearchTest, BsearchSelectorTakesAnyComparison)
{
    auto words = NSArray::of("alto", "Bass", "tenor");
    EXPECT_EQ(LUMArray::bsearchSelector(words, "BASS", NSSelector("caseInsensitiveCompare:")), 1u);
}

TEST_F(LUMArraySearchTest, BsearchSelectorRaisesWhenNobodyAnswers)
{
    EXPECT_EQ(nameRaisedBy([&] { return LUMArray::bsearchSelector(odd, 3, NSSelector("noSuchMethod:")); }),
        "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] { return LUMArray::bsearchSelector(odd, 3, NSSelector()); }),
        "NSInvalidArgumentException");
}

TEST_F(LUMArraySearchTest, BsearchComparatorFunctionGivesTheFunctionItsContext)
{
    auto falling = NSArray::of(5, 3, 1);
    NSSelector compare = kCompare;
    auto backwards = +[](const NSId& a, const NSId& b, void* context) {
        return NSSend<NSComparisonResult>(b, *static_cast<NSSelector*>(context), a);
    };
    EXPECT_EQ(LUMArray::bsearchComparatorFunction(falling, 1, backwards, &compare), 2u);
    EXPECT_EQ(LUMArray::bsearchComparatorFunction(falling, 4, backwards, &compare), 1u);
}

TEST_F(LUMArraySearchTest, BsearchComparatorFunctionRaisesForANullFunction)
{
    EXPECT_EQ(nameRaisedBy([&] { return LUMArray::bsearchComparatorFunction(odd, 1, nullptr, nullptr); }),
        "NSInvalidArgumentException");
}

RC_GTEST_PROP(LUMArraySearchLaw, FindsWhatALowerBoundFinds, (std::vector<int> values, int wanted))
{
    std::sort(values.begin(), values.end());
    auto array = NSMutableArray::array();
    for (int value : values)
        array->addObject(value);
    RC_ASSERT(LUMArray::bsearchSelector(array, wanted, kCompare)
        == static_cast<NSUInteger>(std::lower_bound(values.begin(), values.end(), wanted) - values.begin()));
}

/// Compares by methods of every kind of result.
class Rank : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"narrow:", &Rank::narrow>(),
            NSMethodOf<"wide:", &Rank::wide>(),
            NSMethodOf<"unsigned:", &Rank::asUnsigned>(),
            NSMethodOf<"byte:", &Rank::byte>(),
            NSMethodOf<"real:", &Rank::real>(),
            NSMethodOf<"object:", &Rank::object>(),
            NSMethodOf<"nothing:", &Rank::nothing>(),
            NSMethodOf<"name:", &Rank::name>(),
        };
        static const NSClass& type = NSClass::define("Rank", &NSObject::classObject(), kMethods);
        return type;
    }

    std::int32_t narrow(Rank& other) { return mRank - other.mRank; }
    NSInteger wide(const NSId&) { return answer; }
    std::uint64_t asUnsigned(const NSId&) { return 0xFFFFFFFF; }
    signed char byte(const NSId&) { return -1; }
    double real(const NSId&) { return -1.5; }
    NSId object(const NSId&) { return NSNumber::numberWithInt(-1); }
    void nothing(const NSId&) { }
    NSSelector name(const NSId&) { return kCompare; }

    NSInteger answer = 0;

protected:
    explicit Rank(int rank) : mRank(rank) { }
    ~Rank() override = default;

private:
    int mRank;
};

struct CompareObjectsWithSelectorTest : ObjectTest {
    std::int32_t compare(const char* selector)
    {
        return lum::CompareObjectsWithSelector(low, high, NSSelector(selector));
    }
    NSRef<Rank> low = NSMake<Rank>(1);
    NSRef<Rank> high = NSMake<Rank>(4);
};

TEST_F(CompareObjectsWithSelectorTest, SendsToTheFirstWithTheSecond)
{
    EXPECT_EQ(compare("narrow:"), -3);
    EXPECT_EQ(lum::CompareObjectsWithSelector(high, low, NSSelector("narrow:")), 3);
}

TEST_F(CompareObjectsWithSelectorTest, DeliberatelyReadsTheLow32BitsOfAWiderResult)
{
    low->answer = NSInteger { 1 } << 32;
    EXPECT_EQ(compare("wide:"), 0);
    low->answer = 0x7'FFFF'FFFF;
    EXPECT_EQ(compare("wide:"), -1);
    low->answer = -1;
    EXPECT_EQ(compare("wide:"), -1);
    low->answer = std::numeric_limits<NSInteger>::min();
    EXPECT_EQ(compare("wide:"), 0);
}

TEST_F(CompareObjectsWithSelectorTest, ReadsOtherIntegers)
{
    EXPECT_EQ(compare("unsigned:"), -1);
    EXPECT_EQ(compare("byte:"), -1);
}

TEST_F(CompareObjectsWithSelectorTest, DropsTheFractionOfARealResult)
{
    EXPECT_EQ(compare("real:"), -1);
}

TEST_F(CompareObjectsWithSelectorTest, RaisesForAResultThatIsNoNumber)
{
    for (const char* selector : { "object:", "nothing:", "name:" })
        EXPECT_EQ(nameRaisedBy([&] { compare(selector); }), "NSInvalidArgumentException") << selector;
}

TEST_F(CompareObjectsWithSelectorTest, RaisesWhenTheFirstDoesNotAnswer)
{
    EXPECT_EQ(nameRaisedBy([&] { compare("noSuchMethod:"); }), "NSInvalidArgumentException");
}

TEST_F(CompareObjectsWithSelectorTest, IsZeroForANullFirst)
{
    EXPECT_EQ(lum::CompareObjectsWithSelector(nullptr, low, NSSelector("narrow:")), 0);
}

}
