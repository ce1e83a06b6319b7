// Classes that are gone, and what stands in for them.
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSKeyedUnarchiverDelegate.h"
#include "tests/fixture.h"
#include "tests/platform/archiving/archive_list.h"
#include "tests/platform/archiving/node.h"
#include "tests/raised_by.h"

namespace {

/// Offers one class for every other, may replace what was made, and tells what it heard.
class StandIn : public NSObject, public NSKeyedUnarchiverDelegate {
public:
    const NSClass* unarchiverCannotDecodeObjectOfClassName(
        NSKeyedUnarchiver&, const NSRef<NSString>& name, const NSRef<NSArray>& originalClasses) override
    {
        heard +=
            "cannot(" + name->utf8() + " of " + originalClasses->componentsJoinedByString(",")->utf8() + ") ";
        return offered;
    }
    NSId unarchiverDidDecodeObject(NSKeyedUnarchiver&, const NSId& object) override
    {
        heard += "did(" + std::string(object->isa().name()) + ") ";
        return replaces ? replacement : object;
    }
    void unarchiverWillFinish(NSKeyedUnarchiver&) override { heard += "finish "; }
    void unarchiverDidFinish(NSKeyedUnarchiver&) override { heard += "finished"; }

    const NSClass* offered = nullptr;
    bool replaces = false;
    NSId replacement;
    std::string heard;
};

class KeyedSubstitutionTest : public ObjectTest {
protected:
    /// An archive of two objects of a class that is gone, with the values of a Node.
    static NSRef<NSData> goneNodes()
    {
        return archiveOfSlots(NSArray::of(
            NSDictionary::of({ { "name", uid(3) }, { "next", uid(4) }, { "$class", uid(2) } }),
            classRecord("GoneNode"), "a", NSDictionary::of({ { "name", uid(3) }, { "$class", uid(2) } })));
    }
    KeyedSubstitutionTest() { NSCoding::registerClass<Node>(); }

    NSRef<StandIn> standIn = NSMake<StandIn>();
    NSRef<NSKeyedUnarchiver> unarchiver = NSKeyedUnarchiver::initForReadingWithData(goneNodes());
};

TEST_F(KeyedSubstitutionTest, RaisesForAClassThatIsNotRegistered)
{
    EXPECT_EQ(raisedBy([&] { return unarchiver->decodeObjectForKey("root"); }),
        "NSInvalidUnarchiveOperationException: the archive is broken: the class \"GoneNode\" of an object is "
        "not "
        "registered");
}

TEST_F(KeyedSubstitutionTest, AsksTheDelegateOnceForEachClass)
{
    unarchiver->setDelegate(standIn);
    standIn->offered = &Node::classObject();
    auto node = unarchiver->decodeObjectForKey<Node>("root");
    ASSERT_TRUE(node);
    EXPECT_EQ(node->name->utf8(), "a");
    EXPECT_TRUE(NSCast<Node>(node->next));
    unarchiver->finishDecoding();
    EXPECT_EQ(standIn->heard,
        "cannot(GoneNode of GoneNode,NSObject) did(NSString) did(Node) did(Node) finish finished");
}

TEST_F(KeyedSubstitutionTest, RaisesWhenTheDelegateHasNoneEither)
{
    unarchiver->setDelegate(standIn);
    EXPECT_EQ(nameRaisedBy([&] { return unarchiver->decodeObjectForKey("root"); }),
        "NSInvalidUnarchiveOperationException");
    EXPECT_EQ(standIn->heard, "cannot(GoneNode of GoneNode,NSObject) ");
}

TEST_F(KeyedSubstitutionTest, RaisesForASubstituteThatIsNotRegistered)
{
    unarchiver->setDelegate(standIn);
    standIn->offered = &StandIn::classObject();
    EXPECT_EQ(nameRaisedBy([&] { return unarchiver->decodeObjectForKey("root"); }),
        "NSInvalidUnarchiveOperationException");
}

TEST_F(KeyedSubstitutionTest, RaisesForASubstituteOfAWrongType)
{
    unarchiver->setDelegate(standIn);
    standIn->offered = &NSArray::classObject();
    EXPECT_EQ(nameRaisedBy([&] { return unarchiver->decodeObjectForKey("root"); }),
        "NSInvalidUnarchiveOperationException");
}

TEST_F(KeyedSubstitutionTest, RaisesForAReplacementOfAWrongType)
{
    unarchiver->setDelegate(standIn);
    standIn->offered = &Node::classObject();
    standIn->replaces = true;
    standIn->replacement = 5;
    EXPECT_EQ(nameRaisedBy([&] { return unarchiver->decodeObjectForKey<Node>("root"); }),
        "NSInvalidUnarchiveOperationException");
}

TEST_F(KeyedSubstitutionTest, TakesNullForAReplacement)
{
    auto data = NSKeyedArchiver::archivedDataWithRootObject("text");
    unarchiver = NSKeyedUnarchiver::initForReadingWithData(data);
    unarchiver->setDelegate(standIn);
    standIn->replaces = true;
    EXPECT_FALSE(unarchiver->decodeObjectForKey("root"));
    data = NSKeyedArchiver::archivedDataWithRootObject(NSArray::of("text"));
    unarchiver = NSKeyedUnarchiver::initForReadingWithData(data);
    unarchiver->setDelegate(standIn);
    EXPECT_EQ(nameRaisedBy([&] { return unarchiver->decodeObjectForKey("root"); }),
        "NSInvalidUnarchiveOperationException");
}

TEST_F(KeyedSubstitutionTest, MakesTheClassThatIsSetForAName)
{
    unarchiver->setClass(Node::classObject(), "GoneNode");
    EXPECT_TRUE(unarchiver->decodeObjectForKey<Node>("root"));
}

TEST_F(KeyedSubstitutionTest, PrefersTheClassThatIsSetToTheOneOfThatName)
{
    unarchiver = NSKeyedUnarchiver::initForReadingWithData(
        NSKeyedArchiver::archivedDataWithRootObject(NSArray::of("a")));
    unarchiver->setClass(NSMutableArray::classObject(), "NSArray");
    EXPECT_TRUE(unarchiver->decodeObjectForKey<NSMutableArray>("root"));
}

TEST_F(KeyedSubstitutionTest, ForgetsADelegateThatHasEnded)
{
    unarchiver->setDelegate(NSMake<StandIn>());
    EXPECT_FALSE(unarchiver->delegate());
    EXPECT_EQ(nameRaisedBy([&] { return unarchiver->decodeObjectForKey("root"); }),
        "NSInvalidUnarchiveOperationException");
}

}
