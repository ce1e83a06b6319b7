#include "LUMPlatform/NSCoding.h"

#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSSend.h"
#include "platform/archiving/class_codings.h"
#include "tests/fixture.h"
#include "tests/platform/archiving/node.h"
#include "tests/raised_by.h"

#include <thread>

namespace {

using platform::CodedKind;

class NSCodingTest : public ObjectTest { };

/// A subclass with a class object of its own.
class SpecialNode : public Node {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("SpecialNode", &Node::classObject(), {});
        return type;
    }
};

/// One without: it is a Node.
class PlainNode : public Node { };

TEST_F(NSCodingTest, KnowsTheClassesOfThePlatform)
{
    EXPECT_EQ(platform::classCodingNamed("NSString")->type, &NSString::classObject());
    EXPECT_EQ(platform::classCodingNamed("NSMutableString")->kind, CodedKind::MutableString);
    for (const char* name : { "NSURL", "NSUUID", "NSNumber", "NSData", "NSMutableData", "NSDate", "NSNull",
             "NSArray", "NSMutableArray", "NSDictionary", "NSMutableDictionary", "NSSet", "NSMutableSet" })
        EXPECT_TRUE(platform::classCodingNamed(name)) << name;
    EXPECT_EQ(platform::classCodingNamed("NSObject"), nullptr);
}

TEST_F(NSCodingTest, KnowsARegisteredClass)
{
    EXPECT_EQ(&NSCoding::registerClass<Node>(), &Node::classObject());
    EXPECT_EQ(platform::classCodingNamed("Node"), platform::classCoding(Node::classObject()));
    EXPECT_EQ(platform::classCoding(Node::classObject())->kind, CodedKind::Custom);
}

TEST_F(NSCodingTest, KeepsTheFirstOfTwoRegistrations)
{
    NSCoding::registerClass<Node>();
    const platform::ClassCoding before = *platform::classCoding(Node::classObject());
    NSCoding::registerClassCoding(Node::classObject(), {});
    EXPECT_EQ(platform::classCoding(Node::classObject())->functions.make, before.functions.make);
}

TEST_F(NSCodingTest, RegistersEachClassForItself)
{
    NSCoding::registerClass<Node>();
    EXPECT_EQ(platform::classCoding(SpecialNode::classObject()), nullptr);
    EXPECT_EQ(raisedBy([] { return platform::requiredClassCoding(*NSMake<SpecialNode>()).kind; }),
        "NSInvalidArgumentException: objects of class SpecialNode cannot be archived: the class is not "
        "registered (NSCoding::registerClass)");
    EXPECT_EQ(platform::requiredClassCoding(*NSMake<PlainNode>()).type, &Node::classObject());
}

TEST_F(NSCodingTest, IsADeclaredProtocol)
{
    EXPECT_TRUE(NSCast<NSCoding>(NSId(Node::named("a"))));
    EXPECT_FALSE(NSCast<NSCoding>(NSId(NSMake<NSObject>())));
}

TEST_F(NSCodingTest, AnswersToSeveralThreads)
{
    std::vector<std::thread> threads;
    for (int at = 0; at < 4; ++at)
        threads.emplace_back([] {
            for (int round = 0; round < 100; ++round) {
                NSCoding::registerClass<Node>();
                EXPECT_TRUE(platform::classCodingNamed("Node"));
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

}
