// Graphs that lead back into themselves, are very deep, or claim to be very large.
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSSet.h"
#include "platform/proplists/binary_objects.h"
#include "tests/fixture.h"
#include "tests/platform/archiving/archive_list.h"
#include "tests/platform/archiving/node.h"
#include "tests/raised_by.h"

namespace {

constexpr const char* kUnarchive = "NSInvalidUnarchiveOperationException";

class KeyedGraphsTest : public ObjectTest {
protected:
    static NSId again(const NSId& root)
    {
        return NSKeyedUnarchiver::unarchiveObjectWithData(NSKeyedArchiver::archivedDataWithRootObject(root));
    }
};

TEST_F(KeyedGraphsTest, ComeBackWhenTheyLeadIntoThemselves)
{
    auto node = Node::named("a");
    auto list = NSMutableArray::of(node, node);
    node->next = list;
    auto read = NSCast<NSMutableArray>(again(list));
    node->next = nullptr;
    ASSERT_EQ(read->count(), 2u);
    EXPECT_EQ(read->objectAtIndex(0), read->objectAtIndex(1));
    EXPECT_EQ(read->objectAtIndex<Node>(0)->next, read);
    read->removeAllObjects();
}

TEST_F(KeyedGraphsTest, ComeBackWhenImmutableCollectionsLeadIntoThemselves)
{
    auto inner = NSMutableArray::array();
    auto outer = NSArray::of(inner, NSDictionary::of({ { "inner", inner } }));
    inner->addObject(outer);
    auto read = NSCast<NSArray>(again(outer));
    inner->removeAllObjects();
    auto readInner = read->objectAtIndex<NSMutableArray>(0);
    EXPECT_EQ(readInner->objectAtIndex(0), read);
    EXPECT_EQ(read->objectAtIndex<NSDictionary>(1)->objectForKey("inner"), readInner);
    readInner->removeAllObjects();
}

/// Reads what it leads to as a whole, to see that it is there.
class Counter : public NSObject, public NSCoding {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("Counter", &NSObject::classObject(), {});
        return type;
    }
    static NSRef<Counter> initWithCoder(NSCoder& coder)
    {
        auto counter = NSMake<Counter>();
        counter->list = coder.decodeObjectForKey<NSArray>("list");
        counter->seen = counter->list->count();
        return counter;
    }
    void encodeWithCoder(NSCoder& coder) const override { coder.encodeObjectForKey(list, "list"); }

    NSRef<NSArray> list;
    NSUInteger seen = 0;
};

TEST_F(KeyedGraphsTest, ShowAnObjectItsCollectionsWhole)
{
    NSCoding::registerClass<Counter>();
    auto list = NSArray::of(1, 2, 3);
    auto counter = NSMake<Counter>();
    counter->list = list;
    for (const NSId& root : { NSId(NSArray::of(counter, list)), NSId(NSArray::of(list, counter)) }) {
        auto read = NSCast<NSArray>(again(root));
        for (const NSId& element : read)
            if (auto found = NSCast<Counter>(element)) {
                EXPECT_EQ(found->seen, 3u);
            }
    }
}

TEST_F(KeyedGraphsTest, RaiseForAnObjectNeededBeforeItIsMade)
{
    NSCoding::registerClass<Counter>();
    auto list = NSMutableArray::array();
    auto counter = NSMake<Counter>();
    counter->list = list;
    list->addObject(counter);
    auto data = NSKeyedArchiver::archivedDataWithRootObject(counter);
    list->removeAllObjects();
    EXPECT_EQ(nameRaisedBy([&] { return NSKeyedUnarchiver::unarchiveObjectWithData(data); }), kUnarchive);
}

TEST_F(KeyedGraphsTest, ComeBackFromAnyDepthOfCollections)
{
    constexpr int kLevels = 200'000;
    NSId deep = NSArray::array();
    for (int level = 0; level < kLevels; ++level)
        deep = level % 3 == 0 ? NSId(NSArray::of(deep))
            : level % 3 == 1  ? NSId(NSDictionary::of({ { "a", deep } }))
                              : NSId(NSMutableArray::of(deep));
    NSId read = again(deep);
    int levels = 0;
    while (true) {
        if (auto array = NSCast<NSArray>(read))
            read = array->lastObject();
        else
            read = NSCast<NSDictionary>(read)->objectForKey("a");
        if (!read)
            break;
        ++levels;
    }
    EXPECT_EQ(levels, kLevels);
}

TEST_F(KeyedGraphsTest, RaiseWhenClassesEncodeThemselvesTooDeep)
{
    auto chain = Node::named("last");
    for (int level = 1; level < 1000; ++level)
        chain = Node::named("a", chain);
    EXPECT_TRUE(again(chain)) << "as deep as it may be";
    chain = Node::named("a", chain);
    EXPECT_EQ(raisedBy([&] { return NSKeyedArchiver::archivedDataWithRootObject(chain); }),
        "NSInvalidArgumentException: objects are nested too deep to be archived");
}

/// An archive of a chain of nodes, each in the next one's slot.
NSRef<NSData> chainOfSlots(std::uint32_t length, const char* key)
{
    std::vector<NSId> slots { classRecord("Node") };
    for (std::uint32_t at = 0; at < length; ++at)
        slots.push_back(slotObject(1, key, uid(at + 3)));
    slots.push_back("end");
    return archiveOfSlots(NSArray::arrayWithObjects(std::move(slots)), uid(2));
}

TEST_F(KeyedGraphsTest, RaiseWhenClassesDecodeThemselvesTooDeep)
{
    NSCoding::registerClass<Node>();
    EXPECT_EQ(nameRaisedBy(
                  [&] { return NSKeyedUnarchiver::unarchiveObjectWithData(chainOfSlots(100'000, "next")); }),
        kUnarchive);
}

TEST_F(KeyedGraphsTest, RaiseForTextsThatLeadToTextsWithoutEnd)
{
    std::vector<NSId> slots { classRecord("NSMutableString") };
    for (std::uint32_t at = 0; at < 100'000; ++at)
        slots.push_back(slotObject(1, "NS.string", uid(at + 3)));
    auto data = archiveOfSlots(NSArray::arrayWithObjects(std::move(slots)), uid(2));
    EXPECT_EQ(nameRaisedBy([&] { return NSKeyedUnarchiver::unarchiveObjectWithData(data); }), kUnarchive);
}

TEST_F(KeyedGraphsTest, TakeNoMoreThanTheirBytesHowOftenASlotIsNamed)
{
    // Each of ten arrays holds the next one a hundred times: one object a level, not a hundred to the tenth.
    std::vector<NSId> slots { classRecord("NSArray") };
    for (std::uint32_t at = 0; at < 10; ++at) {
        const std::vector<NSId> hundred(100, uid(at + 3));
        slots.push_back(slotObject(1, "NS.objects", NSArray::arrayWithObjects(hundred)));
    }
    slots.push_back("end");
    auto read = NSCast<NSArray>(NSKeyedUnarchiver::unarchiveObjectWithData(
        archiveOfSlots(NSArray::arrayWithObjects(std::move(slots)), uid(2))));
    ASSERT_EQ(read->count(), 100u);
    EXPECT_EQ(read->objectAtIndex(0), read->objectAtIndex(99));
}

/// Takes the bytes under "b" and the text under "t".
class Taker : public NSObject, public NSCoding {
public:
    static const NSClass& classObject()
    {
        static const NSClass& type = NSClass::define("Taker", &NSObject::classObject(), {});
        return type;
    }
    static NSRef<Taker> initWithCoder(NSCoder& coder)
    {
        (void)coder.decodeBytesForKey("b", nullptr);
        (void)coder.decodeObjectForKey("t");
        return NSMake<Taker>();
    }
    void encodeWithCoder(NSCoder&) const override { }
};

/// An array of `count` objects of a class, each with the same content, which stands in the file once. Slot 4
/// is a text of so many characters.
NSRef<NSData> archiveOfSharers(std::uint32_t count, const char* name, const char* key, const NSId& content)
{
    constexpr std::uint32_t kFirst = 5;
    std::vector<NSId> uids;
    std::vector<NSId> slots { nullptr, classRecord("NSArray"), classRecord(name),
        NSString::stringWithUTF8String(std::string(1 << 20, 't')) };
    for (std::uint32_t at = 0; at < count; ++at) {
        uids.push_back(uid(kFirst + at));
        slots.push_back(slotObject(3, key, content));
    }
    slots[0] = slotObject(2, "NS.objects", NSArray::arrayWithObjects(std::move(uids)));
    return archiveOfSlots(NSArray::arrayWithObjects(std::move(slots)));
}

TEST_F(KeyedGraphsTest, RaiseWhenTheyTakeTheSameBytesTooOften)
{
    NSCoding::registerClass<Taker>();
    const NSId data = NSData::dataWithBytes(std::string(1 << 20, 'd').data(), 1 << 20);
    const NSId text = uid(4);
    auto raised = [](const NSRef<NSData>& archive) {
        return nameRaisedBy([&] { return NSKeyedUnarchiver::unarchiveObjectWithData(archive); });
    };
    for (std::uint32_t count : { 250u, 300u }) {
        const std::string expected = count == 250 ? "" : kUnarchive;
        EXPECT_EQ(raised(archiveOfSharers(count, "Taker", "b", data)), expected) << "bytes";
        EXPECT_EQ(raised(archiveOfSharers(count, "Taker", "t", text)), expected) << "a text";
        EXPECT_EQ(raised(archiveOfSharers(count, "NSString", "NS.string", text)), expected) << "as contents";
    }
}

TEST_F(KeyedGraphsTest, ShareShortTextsAsOftenAsTheyLike)
{
    std::vector<NSId> equal;
    for (int at = 0; at < 10'000; ++at)
        equal.push_back(NSRef<NSString>("the same text for all of them")->mutableCopy());
    EXPECT_EQ(NSCast<NSArray>(again(NSArray::arrayWithObjects(std::move(equal))))->count(), 10'000u);
}

/// The number of the dictionary of so many entries.
std::uint64_t dictionaryOf(std::uint64_t entries, const platform::BinaryObjects& objects)
{
    for (std::uint64_t number = 1; number < objects.count(); ++number) { // 0 is the frame
        const auto object = objects.object(number);
        if (object.type == platform::binary::kDictionary && object.count == entries)
            return number;
    }
    return objects.count();
}

/// A record of a class with so many entries more.
NSId paddedRecord(int entries)
{
    auto record = NSMutableDictionary::dictionaryWithDictionary(NSCast<NSDictionary>(classRecord("NSNull")));
    for (int at = 0; at < entries; ++at)
        record->setObject(1, NSString::stringWithFormat("%d", at));
    return record->copy();
}

TEST_F(KeyedGraphsTest, RaiseForRecordsOfClassesThatShareTheirBytes)
{
    auto objectOfClass = [](std::uint32_t type) { return NSDictionary::of({ { "$class", uid(type) } }); };
    auto data = NSMutableData::dataWithData(
        archiveOfSlots(NSArray::of(slotObject(2, "NS.objects", NSArray::of(uid(3), uid(4), uid(5))),
            classRecord("NSArray"), objectOfClass(6), objectOfClass(7), objectOfClass(8), paddedRecord(500),
            paddedRecord(1), paddedRecord(2))));
    EXPECT_EQ(nameRaisedBy([&] { return NSKeyedUnarchiver::unarchiveObjectWithData(data); }), "");

    const platform::BinaryObjects objects(data->bytes(), {});
    auto bytes = data->mutableBytes();
    const std::size_t offsetSize = std::to_integer<std::size_t>(bytes[bytes.size() - 26]);
    const std::size_t table = platform::binary::readInteger(bytes.data() + bytes.size() - 8, 8);
    const std::size_t place = objects.object(dictionaryOf(502, objects)).begin;
    for (std::uint64_t number : { dictionaryOf(3, objects), dictionaryOf(4, objects) })
        platform::binary::writeInteger(bytes.data() + table + number * offsetSize, place, offsetSize);
    EXPECT_EQ(nameRaisedBy([&] { return NSKeyedUnarchiver::unarchiveObjectWithData(data); }), kUnarchive);
}

TEST_F(KeyedGraphsTest, LeakNothingWhenTheyAreBrokenAndLeadIntoThemselves)
{
    for (const char* name : { "NSArray", "NSMutableArray", "NSSet" })
        EXPECT_EQ(nameRaisedBy([&] {
            return NSKeyedUnarchiver::unarchiveObjectWithData(
                archiveOfSlots(NSArray::of(slotObject(2, "NS.objects", NSArray::of(uid(3), uid(9))),
                    classRecord(name), slotObject(2, "NS.objects", NSArray::of(uid(1), uid(3))))));
        }),
            kUnarchive);
}

TEST_F(KeyedGraphsTest, HoldSetsOfWhatLeadsBackToThem)
{
    auto node = Node::named("a");
    auto set = NSMutableSet::set();
    set->addObject(node);
    node->next = set;
    auto read = NSCast<NSSet>(again(set));
    node->next = nullptr;
    auto readNode = NSCast<Node>(read->allObjects()->lastObject());
    ASSERT_TRUE(readNode);
    EXPECT_EQ(readNode->next, read);
    readNode->next = nullptr;
}

}
