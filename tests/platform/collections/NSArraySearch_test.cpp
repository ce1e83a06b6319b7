#include "LUMPlatform/NSArraySearch.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSNumber.h"
#include "tests/fixture.h"
#include "tests/raised_by.h"
#include "tests/vector_file.h"

#include <sstream>

namespace {

int numberOf(const NSId& object)
{
    return NSCast<NSNumber>(object)->intValue();
}

NSComparisonResult ascending(const NSId& first, const NSId& second, void*)
{
    return NSCast<NSNumber>(first)->compare(NSCast<NSNumber>(second));
}

/// The same, adding "first?second " to the text that is its context.
NSComparisonResult tellingAscending(const NSId& first, const NSId& second, void* told)
{
    std::ostringstream call;
    call << numberOf(first) << '?' << numberOf(second) << ' ';
    *static_cast<std::string*>(told) += call.str();
    return ascending(first, second, nullptr);
}

struct NSArraySearchTest : ObjectTest {
    std::string callsFor(const NSRef<NSArray>& array, int value)
    {
        std::string told;
        NSArraySearch(array, value, &tellingAscending, &told);
        return told;
    }
};

TEST_F(NSArraySearchTest, ComparesNothingInAnEmptyArray)
{
    EXPECT_EQ(callsFor(NSArray::array(), 4), "");
    EXPECT_EQ(callsFor(nullptr, 4), "");
}

TEST_F(NSArraySearchTest, AsksTheLastElementFirst)
{
    EXPECT_EQ(callsFor(NSArray::of(1, 3, 5), 9), "5?9 ");
}

TEST_F(NSArraySearchTest, AsksTheFirstElementNextWithTheValueInFront)
{
    EXPECT_EQ(callsFor(NSArray::of(1, 3, 5), 0), "5?0 0?1 ");
}

TEST_F(NSArraySearchTest, AsksTheElementsBetweenWithTheValueBehind)
{
    EXPECT_EQ(callsFor(NSArray::of(1, 3, 5), 4), "5?4 4?1 1?4 3?4 ");
}

TEST_F(NSArraySearchTest, AsksAboutAsOftenAsTheCountCanBeHalved)
{
    auto array = NSMutableArray::array();
    for (int i = 0; i < 1024; ++i)
        array->addObject(2 * i);
    const std::string told = callsFor(array, 777);
    EXPECT_LE(std::count(told.begin(), told.end(), '?'), 12);
}

TEST_F(NSArraySearchTest, RaisesForANullFunction)
{
    EXPECT_EQ(nameRaisedBy([] { NSArraySearch(NSArray::array(), 1, nullptr, nullptr); }),
        "NSInvalidArgumentException");
}

TEST_F(NSArraySearchTest, PassesOnWhatTheFunctionRaises)
{
    auto raising = +[](const NSId&, const NSId&, void*) -> NSComparisonResult {
        throw NSException(NSGenericException, "cannot be compared");
    };
    EXPECT_EQ(raisedBy([&] { NSArraySearch(NSArray::of(1), 1, raising, nullptr); }),
        "NSGenericException: cannot be compared");
}

TEST_F(NSArraySearchTest, RaisesWhenTheFunctionEmptiesTheArray)
{
    auto array = NSMutableArray::of(1, 3, 5);
    auto emptying = +[](const NSId&, const NSId&, void* list) {
        static_cast<NSMutableArray*>(list)->removeAllObjects();
        return NSOrderedSame;
    };
    EXPECT_EQ(nameRaisedBy([&] { NSArraySearch(array, 1, emptying, array.get()); }), "NSRangeException");
}

class BinarySearchVectors : public testing::TestWithParam<vectors::Row> { };

TEST_P(BinarySearchVectors, FindsTheExpectedIndex)
{
    auto array = NSMutableArray::array();
    for (const vectors::Json& item : GetParam().json("array").items)
        array->addObject(item.number);
    const NSRef<NSNumber> value = GetParam().number("value");
    EXPECT_EQ(NSArraySearch(array, value, &ascending, nullptr),
        static_cast<NSUInteger>(GetParam().number("index")));
}

INSTANTIATE_TEST_SUITE_P(BinarySearch, BinarySearchVectors, testing::ValuesIn(vectors::load("bsearch.tsv")),
    [](const auto& row) { return row.param.name(); });

}
