#include "LUMPlatform/NSKeyValueCoding.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"
#include "tests/vector_file.h"

#include <limits>

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
    void nothing() { }
    NSRange range() { return { 1, 2 }; }
    NSId withArgument(const NSId& argument) { return argument; }

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

const NSClass& Overriding::classObject()
{
    static const NSClass& type =
        NSClass::define("KeyOverriding", &NSObject::classObject(), kOverridingMethods);
    return type;
}

using NSKeyValueCoding::valueForKey;

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

TEST_F(NSKeyValueCodingTest, ObjectsAnswerByTheirMethods)
{
    for (const auto& row : vectors::load("kvc.tsv")) {
        const std::string expression = row.cell("expression");
        const std::string start = "A.valueForKey(";
        const std::string key =
            expression.substr(0, expression.find(')')).substr(std::min(start.size(), expression.size()));
        const bool isInstanceVariable =
            key == "d" || key == "b" || key == "flag" || key == "which" || key == "r";
        if (expression != start + key + ")" || key == "nil" || key == "''" || key == "rangev"
            || key == "pointv" || isInstanceVariable)
            continue;
        EXPECT_EQ(printed(answering, key), row.cell("result")) << expression;
    }
}

TEST_F(NSKeyValueCodingTest, DictionariesAnswerWhatTheyHold)
{
    int rows = 0;
    for (const auto& row : vectors::load("kvc.tsv")) {
        const std::string expression = row.cell("expression");
        const std::string start = "dict.valueForKey(";
        const std::string key = expression.substr(std::min(start.size(), expression.size()),
            expression.size() - std::min(start.size(), expression.size()) - 1);
        if (!expression.starts_with(start) || key == "@self" || key == "@allKeys")
            continue;
        EXPECT_EQ(printed(dictionary, key), row.cell("result")) << expression;
        ++rows;
    }
    EXPECT_GE(rows, 5);
    EXPECT_THAT(valueForKey(dictionary, "@allKeys"), Equals(dictionary->allKeys()));
    EXPECT_EQ(printed(dictionary, "@"), "EXC NSUnknownKeyException");
    EXPECT_EQ(printed(NSDictionary::of({ { "", 5 } }), ""), "5");
    EXPECT_EQ(printed(dictionary, nullptr), "(nil)");
}

TEST_F(NSKeyValueCodingTest, NumbersKeepTheirType)
{
    EXPECT_EQ(printed(answering, "delta"), "_getDelta");
    EXPECT_EQ(printed(answering, "shortv"), "-3");
    EXPECT_EQ(printed(answering, "unsignedv"), "4000000000");
    EXPECT_EQ(printed(answering, "doublev"), "0.1");
    EXPECT_STREQ(NSCast<NSNumber>(valueForKey(answering, "intv"))->objCType(), "i");
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
