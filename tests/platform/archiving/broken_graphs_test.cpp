// Graphs that lead back into themselves, in archives that turn out to be broken: nobody gets them, so nothing
// of them may stay. The fixture counts what does.
#include "LUMPlatform/NSArchiver.h"
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSSet.h"
#include "LUMPlatform/NSUnarchiver.h"
#include "tests/fixture.h"
#include "tests/platform/archiving/archive_list.h"
#include "tests/platform/archiving/cut_graph.h"
#include "tests/raised_by.h"

namespace {

constexpr const char* kUnarchive = "NSInvalidUnarchiveOperationException";

/// Takes no notice of what goes wrong with its part.
class Lenient : public NSObject, public NSCoding {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("Lenient", &NSObject::classObject(), {});
        return type;
    }
    static NSRef<Lenient> initWithCoder(NSCoder& coder)
    {
        auto lenient = NSMake<Lenient>();
        try {
            if (coder.allowsKeyedCoding())
                lenient->part = coder.decodeObjectForKey<NSString>("part");
            else
                lenient->part = coder.decodeObject<NSString>();
        } catch (const NSException&) {
            lenient->part = "none";
        }
        return lenient;
    }
    void encodeWithCoder(NSCoder& coder) const override
    {
        if (coder.allowsKeyedCoding())
            coder.encodeObjectForKey(part, "part");
        else
            coder.encodeObject(part);
    }

    NSId part;
};

class BrokenGraphsTest : public ObjectTest {
protected:
    BrokenGraphsTest()
    {
        NSCoding::registerClass<Node>();
        NSCoding::registerClass<Lenient>();
    }
    static NSId lenientWith(const NSId& part)
    {
        auto lenient = NSMake<Lenient>();
        lenient->part = part;
        return lenient;
    }
    /// Two nodes and collections of every kind that all lead back to each other, and a text behind them.
    static NSRef<NSArray> knot()
    {
        auto a = Node::named("a");
        auto b = Node::named("b", a);
        auto list = NSMutableArray::of(a, b);
        auto set = NSMutableSet::set();
        set->addObject(b);
        a->next = NSArray::of(b, list, set, NSDictionary::of({ { "list", list } }));
        list->addObject(a->next);
        return NSArray::of(a, "end");
    }
};

TEST_F(BrokenGraphsTest, EndWhenAKeyedArchiveHoldsNothingMore)
{
    // The root is an array of a node, whose next one leads back to it, and of what is not there.
    auto data = archiveOfSlots(NSArray::of(slotObject(2, "NS.objects", NSArray::of(uid(3), uid(9))),
        classRecord("NSArray"), slotObject(4, "next", uid(5)), classRecord("Node"),
        slotObject(4, "next", uid(6)), slotObject(2, "NS.objects", NSArray::of(uid(3), uid(5), uid(6)))));
    EXPECT_EQ(nameRaisedBy([&] { return NSKeyedUnarchiver::unarchiveObjectWithData(data); }), kUnarchive);
}

TEST_F(BrokenGraphsTest, EndWhereverASequentialArchiveIsCutOff)
{
    const auto root = knot();
    auto whole = NSArchiver::archivedDataWithRootObject(root);
    for (NSUInteger length = 0; length < whole->length(); ++length)
        EXPECT_EQ(nameRaisedBy([&] {
            return NSUnarchiver::unarchiveObjectWithData(whole->subdataWithRange({ 0, length }));
        }),
            "NSInconsistentArchiveException")
            << length;
    cutGraph(NSUnarchiver::unarchiveObjectWithData(whole));
    cutGraph(root);
}

TEST_F(BrokenGraphsTest, EndWhenAnotherClassIsAskedFor)
{
    const auto root = knot();
    auto keyed = NSKeyedUnarchiver::initForReadingWithData(NSKeyedArchiver::archivedDataWithRootObject(root));
    EXPECT_EQ(nameRaisedBy([&] { return keyed->decodeObjectForKey<NSString>("root"); }), kUnarchive);
    EXPECT_EQ(nameRaisedBy([&] { return keyed->decodeObjectForKey("root"); }), kUnarchive) << "ever after";

    auto data = NSArchiver::archivedDataWithRootObject(root);
    auto sequential = NSUnarchiver::initForReadingWithData(data);
    EXPECT_EQ(nameRaisedBy([&] { return sequential->decodeObject<NSString>(); }), kUnarchive);
    sequential = NSUnarchiver::initForReadingWithData(data);
    NSRef<NSString> text;
    EXPECT_EQ(nameRaisedBy([&] {
        sequential->decodeValuesOfObjCTypes(text);
        return 0;
    }),
        kUnarchive);
    EXPECT_EQ(nameRaisedBy([&] { return sequential->decodeObject(); }), kUnarchive) << "ever after";
    EXPECT_EQ(nameRaisedBy([&] { return sequential->decodeBytesWithReturnedLength(nullptr); }), kUnarchive);
    cutGraph(root);
}

TEST_F(BrokenGraphsTest, LeaveWhatWasHandedOutBeforeAsItIs)
{
    auto data = NSMutableData::data();
    auto archiver = NSKeyedArchiver::initForWritingWithMutableData(data);
    const auto root = knot();
    archiver->encodeObjectForKey(root, "good");
    archiver->encodeInt(1, "bad");
    archiver->finishEncoding();
    cutGraph(root);
    auto unarchiver = NSKeyedUnarchiver::initForReadingWithData(data);
    auto good = unarchiver->decodeObjectForKey<NSArray>("good");
    EXPECT_EQ(nameRaisedBy([&] { return unarchiver->decodeObjectForKey("bad"); }), kUnarchive);
    EXPECT_EQ(good->count(), 2u);
    EXPECT_TRUE(good->objectAtIndex<Node>(0)->next);
    cutGraph(good);
}

TEST_F(BrokenGraphsTest, AreNotReadWithoutAPartThatRaised)
{
    const NSId root = lenientWith(NSArray::of("no string"));
    EXPECT_EQ(nameRaisedBy([&] {
        return NSKeyedUnarchiver::unarchiveObjectWithData(NSKeyedArchiver::archivedDataWithRootObject(root));
    }),
        kUnarchive);
    EXPECT_NE(nameRaisedBy([&] {
        return NSUnarchiver::unarchiveObjectWithData(NSArchiver::archivedDataWithRootObject(root));
    }),
        "");
}

TEST_F(BrokenGraphsTest, AreNotWrittenOnWhereAPartRaised)
{
    auto archiver = NSArchiver::initForWritingWithMutableData(NSMutableData::data());
    EXPECT_EQ(nameRaisedBy([&] {
        archiver->encodeObject(NSArray::of("a", NSMake<NSObject>()));
        return 0;
    }),
        "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] {
        archiver->encodeObject("b");
        return 0;
    }),
        "NSInvalidArchiveOperationException");
    EXPECT_EQ(nameRaisedBy([&] {
        archiver->encodeBytes("b", 1);
        return 0;
    }),
        "NSInvalidArchiveOperationException");
    EXPECT_EQ(nameRaisedBy([&] {
        archiver->encodeValuesOfObjCTypes(1);
        return 0;
    }),
        "NSInvalidArchiveOperationException");
}

}
