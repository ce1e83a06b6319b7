#include "LUMPlatform/NSKeyValueCoding.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSSortDescriptor.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"
#include "tests/vector_file.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <set>

namespace {

/// Answers to each key in several ways.
class Answering : public NSObject {
public:
    static const NSClass& classObject();

    NSId getAlpha() { return "getAlpha"; }
    NSId beta() { return "beta"; }
    NSId other() { return "a later one"; }
    NSId underGetDelta() { return "_getDelta"; }
    NSId underEpsilon() { return "_epsilon"; }
    bool yes() { return true; }
    int integer() { return 7; }
    float real() { return 1.5F; }
    signed char byte() { return 65; }
    unsigned long long large() { return std::numeric_limits<unsigned long long>::max(); }
    short narrow() { return -3; }
    unsigned wide() { return 4'000'000'000U; }
    double precise() { return 0.1; }
    void nothing() { ++calledForNothing; }
    NSRange range() { return { 1, 2 }; }
    NSId withArgument(const NSId& argument) { return argument; }

    int calledForNothing = 0;

protected:
    Answering() = default;
    ~Answering() override = default;
};

constexpr NSMethod kMethods[] = {
    NSMethodOf<"getAlpha", &Answering::getAlpha>(),
    NSMethodOf<"alpha", &Answering::other>(),
    NSMethodOf<"isAlpha", &Answering::other>(),
    NSMethodOf<"beta", &Answering::beta>(),
    NSMethodOf<"isBeta", &Answering::other>(),
    NSMethodOf<"_getBeta", &Answering::other>(),
    NSMethodOf<"isGamma", &Answering::yes>(),
    NSMethodOf<"_gamma", &Answering::other>(),
    NSMethodOf<"_getDelta", &Answering::underGetDelta>(),
    NSMethodOf<"_delta", &Answering::other>(),
    NSMethodOf<"_epsilon", &Answering::underEpsilon>(),
    NSMethodOf<"intv", &Answering::integer>(),
    NSMethodOf<"floatv", &Answering::real>(),
    NSMethodOf<"charv", &Answering::byte>(),
    NSMethodOf<"ullv", &Answering::large>(),
    NSMethodOf<"shortv", &Answering::narrow>(),
    NSMethodOf<"unsignedv", &Answering::wide>(),
    NSMethodOf<"doublev", &Answering::precise>(),
    NSMethodOf<"voidv", &Answering::nothing>(),
    NSMethodOf<"rangev", &Answering::range>(),
    NSMethodOf<"argument:", &Answering::withArgument>(),
};

const NSClass& Answering::classObject()
{
    static const NSClass& type = NSClass::define("KeyAnswering", &NSObject::classObject(), kMethods);
    return type;
}

/// Answers by what it inherits.
class Inheriting : public Answering { };

/// Answers the selector itself.
class Overriding : public NSObject {
public:
    static const NSClass& classObject();
    NSId value(const NSRef<NSString>& key) { return key; }

protected:
    Overriding() = default;
    ~Overriding() override = default;
};

constexpr NSMethod kOverridingMethods[] = { NSMethodOf<"valueForKey:", &Overriding::value>() };

/// Answers to every key.
class Undefined : public NSObject {
public:
    static const NSClass& classObject();
    NSId undefined(const NSRef<NSString>& key) { return NSString::stringWithFormat("undef:%@", key); }

protected:
    Undefined() = default;
    ~Undefined() override = default;
};

constexpr NSMethod kUndefinedMethods[] = {
    NSMethodOf<"valueForUndefinedKey:", &Undefined::undefined>(),
};

const NSClass& Undefined::classObject()
{
    static const NSClass& type = NSClass::define("KeyUndefined", &NSObject::classObject(), kUndefinedMethods);
    return type;
}

const NSClass& Overriding::classObject()
{
    static const NSClass& type =
        NSClass::define("KeyOverriding", &NSObject::classObject(), kOverridingMethods);
    return type;
}

using NSKeyValueCoding::valueForKey;
using NSKeyValueCoding::valueForKeyPath;

class NSKeyValueCodingTest : public ObjectTest {
protected:
    NSRef<Answering> answering = NSMake<Answering>();
    /// The one of the vectors.
    NSRef<NSDictionary> dictionary = NSDictionary::of(
        { { "x", NSDictionary::of({ { "y", "in" } }) }, { "@foo", "at2" }, { "x.y", "dotted" },
            { "@count", "at" }, { "a", "1" }, { "count", "cnt" }, { "@allKeys", "at3" } });

    /// The value as the vectors print it.
    static std::string printed(const NSId& object, const NSRef<NSString>& key)
    {
        NSId value;
        const std::string raised = nameRaisedBy([&] { value = valueForKey(object, key); });
        if (!raised.empty())
            return "EXC " + raised;
        return value ? value->description()->utf8() : "(nil)";
    }
};

/// A row of the vectors: an object, and the operation and key that it is asked by.
struct Row {
    std::string object, operation, key, result;
};

/// The rows that are a look-up: "object.operation(key)".
std::vector<Row> lookUpRows()
{
    std::vector<Row> rows;
    for (const auto& row : vectors::load("kvc.tsv")) {
        const std::string text = row.cell("expression");
        const std::size_t dot = text.find('.');
        const std::size_t open = text.find('(', dot);
        if (dot == std::string::npos || !text.ends_with(')') || text.compare(dot, 6, ".value") != 0)
            continue;
        rows.push_back({ text.substr(0, dot), text.substr(dot + 1, open - dot - 1),
            text.substr(open + 1, text.size() - open - 2), row.cell("result") });
    }
    return rows;
}

/// Structures are no values here, and there are no instance variables to be found by name.
bool isOfObjectiveC(const std::string& key)
{
    return std::set<std::string> { "rangev", "pointv", "d", "b", "flag", "which", "r" }.contains(key);
}

class KeyValueVectors : public NSKeyValueCodingTest, public testing::WithParamInterface<Row> { };

TEST_P(KeyValueVectors, GiveWhatIsExpected)
{
    const Row& row = GetParam();
    const NSId object = row.object == "A" ? NSId(answering)
        : row.object == "B"               ? NSId(NSMake<Inheriting>())
        : row.object == "C"               ? NSId(NSMake<Undefined>())
        : row.object == "dict"            ? NSId(dictionary)
        : row.object == "dict{a}"         ? NSId(NSDictionary::of({ { "a", "1" } }))
                                          : NSId(NSArray::of("a", "bb", "c"));
    const NSRef<NSString> key = row.key == "nil" ? nullptr : NSRef<NSString>(row.key == "''" ? "" : row.key);
    const auto look = row.operation == "valueForKey" ? &valueForKey : &valueForKeyPath;
    NSId value;
    const std::string raised = nameRaisedBy([&] { value = look(object, key); });
    if (row.key == "@self") {
        EXPECT_TRUE(value == object);
    } else if (row.key == "@allKeys") { // which are in no order there
        EXPECT_THAT(value, Equals(NSCast<NSDictionary>(object)->allKeys()));
    } else if (!raised.empty()) {
        EXPECT_EQ("EXC " + raised, row.result);
    } else if (row.result.starts_with('(') && row.result != "(nil)") {
        EXPECT_EQ("(" + NSCast<NSArray>(value)->componentsJoinedByString(", ")->utf8() + ")", row.result);
    } else
        EXPECT_EQ(value ? value->description()->utf8() : "(nil)", row.result);
}

std::vector<Row> rowsToRun()
{
    auto rows = lookUpRows();
    std::erase_if(rows, [](const Row& row) {
        return (row.object == "A" && isOfObjectiveC(row.key)) || row.key == "@max.length";
    });
    return rows;
}

INSTANTIATE_TEST_SUITE_P(Rows, KeyValueVectors, testing::ValuesIn(rowsToRun()), [](const auto& row) {
    std::string name = row.param.object + "_" + row.param.operation + "_" + row.param.key;
    std::ranges::replace_if(
        name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return std::to_string(row.index) + name;
});

TEST_F(NSKeyValueCodingTest, AllRowsOfDictionariesAreRun)
{
    EXPECT_EQ(
        std::ranges::count_if(rowsToRun(), [](const Row& row) { return row.object.starts_with("dict"); }),
        20);
    EXPECT_EQ(std::ranges::count_if(rowsToRun(), [](const Row& row) { return row.object == "A"; }), 13);
    EXPECT_EQ(std::ranges::count_if(rowsToRun(), [](const Row& row) { return row.object == "array"; }), 4);
}

TEST_F(NSKeyValueCodingTest, DictionariesAnswerWhatTheyHold)
{
    EXPECT_EQ(printed(NSDictionary::of({ { "", 5 } }), ""), "5");
    EXPECT_EQ(printed(dictionary, nullptr), "(nil)");
}

TEST_F(NSKeyValueCodingTest, LookingUpChangesNothing)
{
    auto table = NSMutableDictionary::of({ { "a", 1 } });
    EXPECT_EQ(printed(table, "@removeAllObjects"), "(nil)");
    EXPECT_EQ(table->count(), 1u);
    EXPECT_EQ(printed(answering, "voidv"), "(nil)");
    EXPECT_EQ(answering->calledForNothing, 0);
}

TEST_F(NSKeyValueCodingTest, ArraysAnswerForTheirElements)
{
    auto list = NSArray::of(NSDictionary::of({ { "t", 1 } }), NSDictionary::dictionary());
    EXPECT_THAT(valueForKey(list, "t"), Equals(NSArray::of(1, NSNull::null())));
    EXPECT_THAT(valueForKey(NSArray::of(list, list), "t"),
        Equals(NSArray::of(NSArray::of(1, NSNull::null()), NSArray::of(1, NSNull::null()))));
    EXPECT_THAT(valueForKey(NSArray::array(), nullptr), Equals(NSArray::array()));
    auto ring = NSMutableArray::array();
    ring->addObject(ring);
    EXPECT_EQ(printed(ring, "t"), "EXC NSUnknownKeyException");
    ring->removeAllObjects();
}

TEST_F(NSKeyValueCodingTest, PathsLeadThroughObjectsOfAnyKind)
{
    auto album = NSDictionary::of({ { "tracks", NSArray::of(NSDictionary::of({ { "title", "Intro" } })) } });
    EXPECT_THAT(valueForKeyPath(album, "tracks.title"), Equals(NSArray::of("Intro")));
    EXPECT_THAT(valueForKeyPath(album, "tracks.@count"), Equals(1));
    EXPECT_FALSE(valueForKeyPath(album, "none.title"));
    EXPECT_FALSE(valueForKeyPath(nullptr, "tracks"));
    EXPECT_FALSE(valueForKeyPath(album, nullptr));
    EXPECT_THAT(valueForKeyPath(NSDictionary::of({ { "o", NSMake<Overriding>() } }), "o.x"), Equals("x"));
    EXPECT_THAT(NSSend<NSId>(album, NSSelector("valueForKeyPath:"), NSRef<NSString>("tracks.title")),
        Equals(NSArray::of("Intro")));
}

TEST_F(NSKeyValueCodingTest, PathsMayHaveAnyNumberOfParts)
{
    auto ring = NSMutableDictionary::dictionary();
    ring->setObject(ring, "a");
    std::string path = "a";
    for (int part = 0; part < 200'000; ++part)
        path += ".a";
    EXPECT_TRUE(valueForKeyPath(ring, path) == ring);
    ring->removeAllObjects();
}

TEST_F(NSKeyValueCodingTest, SortDescriptorsCompareByThem)
{
    int rows = 0;
    for (const auto& row : vectors::load("kvc.tsv")) {
        const std::string start = "sortdesc self asc NO a vs ";
        if (!row.cell("expression").starts_with(start))
            continue;
        const auto byCase =
            NSSortDescriptor::initWithKey("self", false, NSSelector("caseInsensitiveCompare:"));
        EXPECT_EQ(
            byCase->compareObject("a", row.cell("expression").substr(start.size())), row.number("result"));
        ++rows;
    }
    EXPECT_EQ(rows, 2);
    auto descriptor = NSSortDescriptor::initWithKey("song.length", true);
    const auto ofLength = [](int length) {
        return NSDictionary::of({ { "song", NSDictionary::of({ { "length", length } }) } });
    };
    EXPECT_EQ(descriptor->compareObject(ofLength(1), ofLength(2)), NSOrderedAscending);
    EXPECT_EQ(descriptor->compareObject(ofLength(2), ofLength(2)), NSOrderedSame);
}

TEST_F(NSKeyValueCodingTest, NumbersKeepTheirType)
{
    EXPECT_EQ(printed(answering, "delta"), "_getDelta");
    EXPECT_EQ(printed(answering, "shortv"), "-3");
    EXPECT_EQ(printed(answering, "unsignedv"), "4000000000");
    EXPECT_EQ(printed(answering, "doublev"), "0.1");
    EXPECT_STREQ(NSCast<NSNumber>(valueForKey(answering, "intv"))->objCType(), "i");
}

TEST_F(NSKeyValueCodingTest, TruthValuesComeAsSuchAndCharactersDoNot)
{
    EXPECT_TRUE(NSCast<NSNumber>(valueForKey(answering, "gamma"))->isBool());
    EXPECT_FALSE(NSCast<NSNumber>(valueForKey(answering, "charv"))->isBool());
}

TEST_F(NSKeyValueCodingTest, StructuresAndOperationsWithArgumentsAreNoValues)
{
    EXPECT_EQ(printed(answering, "rangev"), "EXC NSUnknownKeyException");
    EXPECT_EQ(printed(answering, "argument:"), "EXC NSUnknownKeyException");
}

TEST_F(NSKeyValueCodingTest, TellsWhatIsMissing)
{
    EXPECT_EQ(raisedBy([&] { (void)valueForKey(answering, "none"); }),
        "NSUnknownKeyException: an object of class KeyAnswering has no value for the key \"none\"");
    EXPECT_EQ(printed(answering, nullptr), "EXC NSUnknownKeyException");
    EXPECT_EQ(printed(answering, ""), "EXC NSUnknownKeyException");
    EXPECT_FALSE(valueForKey(nullptr, "a"));
}

TEST_F(NSKeyValueCodingTest, IsADynamicCallThatClassesMayAnswerThemselves)
{
    EXPECT_THAT(valueForKey(NSMake<Overriding>(), "x"), Equals("x"));
    const NSSelector selector("valueForKey:");
    EXPECT_THAT(NSSend<NSId>(dictionary, selector, NSRef<NSString>("@count")), Equals(7));
    EXPECT_THAT(NSSend<NSId>(answering, selector, NSRef<NSString>("alpha")), Equals("getAlpha"));
}

}
