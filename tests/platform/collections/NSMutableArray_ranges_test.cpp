#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

#include <functional>

namespace {

struct NSMutableArrayRangesTest : ObjectTest {
    NSRef<NSMutableArray> list = NSMutableArray::of("a", "b", "c");
    NSRef<NSArray> xy = NSArray::of("x", "y");
};

TEST_F(NSMutableArrayRangesTest, ReplacesARangeByAsMany)
{
    list->replaceObjectsInRange({ 1, 2 }, xy);
    EXPECT_THAT(list, Equals(NSArray::of("a", "x", "y")));
}

TEST_F(NSMutableArrayRangesTest, ReplacesARangeByMore)
{
    list->replaceObjectsInRange({ 1, 1 }, xy);
    EXPECT_THAT(list, Equals(NSArray::of("a", "x", "y", "c")));
}

TEST_F(NSMutableArrayRangesTest, ReplacesARangeByFewer)
{
    list->replaceObjectsInRange({ 0, 3 }, xy);
    EXPECT_THAT(list, Equals(NSArray::of("x", "y")));
}

TEST_F(NSMutableArrayRangesTest, InsertsAtAnEmptyRange)
{
    list->replaceObjectsInRange({ 1, 0 }, xy);
    EXPECT_THAT(list, Equals(NSArray::of("a", "x", "y", "b", "c")));
}

TEST_F(NSMutableArrayRangesTest, AppendsAtTheEnd)
{
    list->replaceObjectsInRange({ 3, 0 }, xy);
    EXPECT_THAT(list, Equals(NSArray::of("a", "b", "c", "x", "y")));
}

TEST_F(NSMutableArrayRangesTest, TakesOutForNull)
{
    list->replaceObjectsInRange({ 0, 2 }, nullptr);
    EXPECT_THAT(list, Equals(NSArray::of("c")));
}

TEST_F(NSMutableArrayRangesTest, ReplacesByTheArrayItself)
{
    list->replaceObjectsInRange({ 1, 1 }, list);
    EXPECT_THAT(list, Equals(NSArray::of("a", "a", "b", "c", "c")));
}

TEST_F(NSMutableArrayRangesTest, RaisesForARangePastTheEnd)
{
    EXPECT_EQ(nameRaisedBy([&] { list->replaceObjectsInRange({ 2, 2 }, xy); }), "NSRangeException");
    EXPECT_EQ(nameRaisedBy([&] {
        list->replaceObjectsInRange({ 1, ~NSUInteger { 0 } }, xy);
    }),
        "NSRangeException");
    EXPECT_THAT(list, Equals(NSArray::of("a", "b", "c")));
}

/// Calls back when it ends.
class Farewell : public NSObject {
public:
    std::function<void()> atEnd;

protected:
    ~Farewell() override { atEnd(); }
};

TEST_F(NSMutableArrayRangesTest, IsWholeWhenWhatItReplacedEnds)
{
    std::string seen;
    auto last = NSMake<Farewell>();
    last->atEnd = [&] { seen += list->componentsJoinedByString(" ")->utf8(); };
    list->setArray(NSArray::of("a", last));
    last = nullptr;
    list->replaceObjectsInRange({ 0, 2 }, NSArray::of("x"));
    EXPECT_EQ(seen, "x");
}

}
