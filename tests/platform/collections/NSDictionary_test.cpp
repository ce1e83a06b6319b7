#include "LUMPlatform/NSDictionary.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSEnumerator.h"
#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"
#include "tests/object_matchers.h"
#include "tests/raised_by.h"

namespace {

struct NSDictionaryTest : ObjectTest {
    NSRef<NSDictionary> dictionary = NSDictionary::of({ { "a", 1 }, { "b", "two" } });
    NSRef<NSMutableDictionary> changing = NSMutableDictionary::of({ { "a", 1 }, { "b", 2 }, { "c", 3 } });
};

/// Equal to every other of its kind, and all with one hash.
class Twin : public NSObject {
public:
    bool isEqual(const NSId& other) const override { return NSCast<Twin>(other) ? true : false; }
    NSUInteger hash() const override { return 7; }
    NSId copy() const override { return NSShare(const_cast<Twin*>(this)); }
};

TEST_F(NSDictionaryTest, FindsValuesByEqualKeys)
{
    EXPECT_EQ(dictionary->count(), 2u);
    EXPECT_THAT(dictionary->objectForKey("a"), Equals(1));
    EXPECT_THAT(dictionary->objectForKey("b"), Equals("two"));
    EXPECT_FALSE(dictionary->objectForKey("c"));
    EXPECT_FALSE(dictionary->objectForKey(nullptr));
    EXPECT_FALSE(NSDictionary::dictionary()->objectForKey("a"));
}

TEST_F(NSDictionaryTest, ReadsAValueAsAClassAndNullWhenItIsAnother)
{
    EXPECT_EQ(dictionary->objectForKey<NSNumber>("a")->intValue(), 1);
    EXPECT_FALSE(dictionary->objectForKey<NSNumber>("b"));
}

TEST_F(NSDictionaryTest, KeepsTheLastValueOfARepeatedKey)
{
    EXPECT_THAT(NSDictionary::of({ { "a", 1 }, { "a", 2 } }), Equals(NSDictionary::of({ { "a", 2 } })));
}

TEST_F(NSDictionaryTest, GivesEntriesInTheOrderOfTheirKeysArrival)
{
    changing->setObject(10, "a");
    changing->removeObjectForKey("b");
    changing->setObject(20, "b");
    EXPECT_THAT(changing->allKeys(), Equals(NSArray::of("a", "c", "b")));
    EXPECT_THAT(changing->allValues(), Equals(NSArray::of(10, 3, 20)));
}

TEST_F(NSDictionaryTest, LoopsOverPairs)
{
    std::string seen;
    for (const auto& [key, value] : dictionary)
        seen += key->description()->utf8() + "=" + value->description()->utf8() + " ";
    EXPECT_EQ(seen, "a=1 b=two ");
}

TEST_F(NSDictionaryTest, RaisesAtTheNextStepOfALoopThatChangedIt)
{
    EXPECT_EQ(nameRaisedBy([&] {
        for (const auto& [key, value] : changing)
            changing->removeObjectForKey(key);
    }),
        "NSGenericException");
    EXPECT_EQ(changing->count(), 2u);
}

TEST_F(NSDictionaryTest, EnumeratesKeysAndObjects)
{
    EXPECT_THAT(dictionary->keyEnumerator()->allObjects(), Equals(NSArray::of("a", "b")));
    EXPECT_THAT(dictionary->objectEnumerator()->allObjects(), Equals(NSArray::of(1, "two")));
    auto keys = dictionary->keyEnumerator();
    dictionary = nullptr;
    EXPECT_THAT(keys->nextObject(), Equals("a"));
    EXPECT_THAT(keys->nextObject(), Equals("b"));
    EXPECT_FALSE(keys->nextObject());
    EXPECT_FALSE(keys->nextObject());
}

TEST_F(NSDictionaryTest, CopiesItsKeys)
{
    auto key = NSMutableString::string();
    key->appendString("a");
    auto table = NSDictionary::dictionaryWithObject(1, key);
    key->appendString("b");
    EXPECT_THAT(table->objectForKey("a"), Equals(1));
    EXPECT_FALSE(table->objectForKey(key));
}

TEST_F(NSDictionaryTest, RaisesForNullKeysAndValues)
{
    EXPECT_EQ(raisedBy([&] { changing->setObject(nullptr, "k"); }),
        "NSInvalidArgumentException: setObject:forKey: the object for key k is null; store NSNull");
    EXPECT_EQ(raisedBy([&] { changing->setObject(1, nullptr); }),
        "NSInvalidArgumentException: setObject:forKey: the key is null; store NSNull");
    EXPECT_EQ(nameRaisedBy([&] { changing->removeObjectForKey(nullptr); }), "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([] {
        (void)NSDictionary::of({ { "a", nullptr } });
    }),
        "NSInvalidArgumentException");
}

TEST_F(NSDictionaryTest, RaisesForAKeyThatCannotBeCopied)
{
    EXPECT_EQ(
        nameRaisedBy([&] { changing->setObject(1, NSMake<NSObject>()); }), "NSInvalidArgumentException");
    EXPECT_EQ(changing->count(), 3u);
}

TEST_F(NSDictionaryTest, PairsTwoListsUp)
{
    EXPECT_THAT(NSDictionary::dictionaryWithObjects(NSArray::of(1, "two"), NSArray::of("a", "b")),
        Equals(dictionary));
    EXPECT_EQ(nameRaisedBy(
                  [] { (void)NSDictionary::dictionaryWithObjects(NSArray::of(1), NSArray::of("a", "b")); }),
        "NSInvalidArgumentException");
    EXPECT_EQ(NSDictionary::dictionaryWithObjects(nullptr, nullptr)->count(), 0u);
    const std::vector<NSId> objects { 1, 2 };
    const std::vector<NSId> keys { "a", "b" };
    EXPECT_THAT(NSDictionary::dictionaryWithObjectsCount(objects, keys),
        Equals(NSDictionary::of({ { "a", 1 }, { "b", 2 } })));
    EXPECT_EQ(nameRaisedBy([&] { (void)NSDictionary::dictionaryWithObjectsCount(objects, {}); }),
        "NSInvalidArgumentException");
}

TEST_F(NSDictionaryTest, EndsAListOfValuesAndKeysAtTheFirstNull)
{
    auto made = [](std::initializer_list<NSId> list) {
        return NSDictionary::dictionaryWithObjectsAndKeys(list);
    };
    EXPECT_THAT(made({ 1, "a", 2, "b", nullptr }), Equals(NSDictionary::of({ { "a", 1 }, { "b", 2 } })));
    EXPECT_THAT(made({ 1, "a", nullptr, "b" }), Equals(NSDictionary::of({ { "a", 1 } })));
    EXPECT_THAT(made({ nullptr, "b", 1, "a" }), Equals(NSDictionary::dictionary()));
    EXPECT_THAT(made({ 1, "a" }), Equals(NSDictionary::of({ { "a", 1 } })));
    EXPECT_EQ(nameRaisedBy([&] { (void)made({ 1, nullptr }); }), "NSInvalidArgumentException");
    EXPECT_EQ(nameRaisedBy([&] { (void)made({ 1, "a", 2 }); }), "NSInvalidArgumentException");
}

TEST_F(NSDictionaryTest, IsEqualByEntriesWhateverTheirOrderAndClass)
{
    auto turned = NSMutableDictionary::of({ { "b", "two" }, { "a", 1.0 } });
    EXPECT_THAT(turned, Equals(dictionary));
    EXPECT_EQ(turned->hash(), dictionary->hash());
    turned->setObject("three", "b");
    EXPECT_FALSE(turned->isEqual(dictionary));
    EXPECT_FALSE(dictionary->isEqual(NSDictionary::of({ { "a", 1 } })));
    EXPECT_FALSE(dictionary->isEqual(NSDictionary::of({ { "a", 1 }, { "c", "two" } })));
    EXPECT_FALSE(dictionary->isEqual("two"));
    EXPECT_FALSE(dictionary->isEqual(nullptr));
}

TEST_F(NSDictionaryTest, IsItsOwnCopyOnlyWhenImmutable)
{
    EXPECT_TRUE(dictionary->copy() == dictionary);
    auto copy = NSCast<NSDictionary>(changing->copy());
    EXPECT_FALSE(NSCast<NSMutableDictionary>(copy));
    auto mutableCopy = NSCast<NSMutableDictionary>(copy->mutableCopy());
    mutableCopy->setObject(4, "d");
    changing->removeAllObjects();
    EXPECT_THAT(copy, Equals(NSDictionary::of({ { "a", 1 }, { "b", 2 }, { "c", 3 } })));
    EXPECT_EQ(mutableCopy->count(), 4u);
}

TEST_F(NSDictionaryTest, TakesEntriesOfAnother)
{
    changing->addEntriesFromDictionary(dictionary);
    changing->addEntriesFromDictionary(nullptr);
    EXPECT_THAT(changing, Equals(NSDictionary::of({ { "a", 1 }, { "b", "two" }, { "c", 3 } })));
    changing->addEntriesFromDictionary(changing);
    EXPECT_EQ(changing->count(), 3u);
    changing->setDictionary(dictionary);
    EXPECT_THAT(changing, Equals(dictionary));
    changing->setDictionary(changing);
    EXPECT_EQ(changing->count(), 2u);
}

TEST_F(NSDictionaryTest, RemovesKeys)
{
    changing->removeObjectForKey("z");
    changing->removeObjectsForKeys(NSArray::of("a", "c", "z"));
    EXPECT_THAT(changing, Equals(NSDictionary::of({ { "b", 2 } })));
}

TEST_F(NSDictionaryTest, RemovesAKeyThatItAloneHolds)
{
    for (const auto& [key, value] : NSCast<NSDictionary>(changing->copy()))
        changing->removeObjectForKey(key);
    EXPECT_EQ(changing->count(), 0u);
}

TEST_F(NSDictionaryTest, HoldsManyKeysThroughInsertionsAndRemovals)
{
    auto table = NSMutableDictionary::dictionary();
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 10'000; ++i)
            table->setObject(i + round, i);
        for (int i = 0; i < 10'000; i += 2)
            table->removeObjectForKey(i);
    }
    EXPECT_EQ(table->count(), 5'000u);
    for (int i = 0; i < 10'000; ++i) {
        if (i % 2 == 0)
            ASSERT_FALSE(table->objectForKey(i)) << i;
        else
            ASSERT_EQ(table->objectForKey<NSNumber>(i)->intValue(), i + 2) << i;
    }
}

TEST_F(NSDictionaryTest, IsDrainedFromItsFrontInLinearTime)
{
    auto table = NSMutableDictionary::dictionary();
    for (int i = 0; i < 100'000; ++i)
        table->setObject(i, i);
    while (table->count() > 0)
        table->removeObjectForKey((*table->begin()).key);
    EXPECT_TRUE(table->begin() == table->end());
}

TEST_F(NSDictionaryTest, TellsKeysOfOneHashApart)
{
    NSId a = NSMake<Twin>();
    changing->setObject(1, a);
    changing->setObject(2, NSMake<Twin>());
    EXPECT_EQ(changing->count(), 4u);
    EXPECT_THAT(changing->objectForKey(a), Equals(2));
    EXPECT_FALSE(changing->objectForKey(7)); // the hash of a number is its value
}

TEST_F(NSDictionaryTest, RaisesWhenAKeysEqualityChangesTheDictionary)
{
    struct Meddler : Twin {
        NSMutableDictionary* target = nullptr;
        bool isEqual(const NSId&) const override
        {
            target->removeAllObjects();
            return true;
        }
    };
    changing->setObject(1, NSMake<Twin>());
    auto meddler = NSMake<Meddler>();
    meddler->target = changing.get();
    EXPECT_EQ(nameRaisedBy([&] { (void)changing->objectForKey(meddler); }), "NSGenericException");
}

TEST_F(NSDictionaryTest, IsWholeWhenAReplacedValueEnds)
{
    struct Last : NSObject {
        NSMutableDictionary* target = nullptr;
        std::string* seen = nullptr;
        ~Last() override { *seen = target->objectForKey("x") ? "there" : "gone"; }
    };
    std::string seen;
    auto add = [&] {
        auto last = NSMake<Last>();
        last->target = changing.get();
        last->seen = &seen;
        changing->setObject(last, "x");
    };
    add();
    changing->setObject(5, "x");
    EXPECT_EQ(seen, "there");
    add();
    changing->removeObjectForKey("x");
    EXPECT_EQ(seen, "gone");
}

TEST_F(NSDictionaryTest, DescribesItselfByAscendingKeys)
{
    auto table = NSDictionary::of({ { "two words", NSArray::of(1, "a b") },
        { "b", NSDictionary::of({ { "x", "é\n" } }) }, { "a", -1 } });
    EXPECT_EQ(table->description()->utf8(),
        "{\n"
        "    a = \"-1\";\n"
        "    b =     {\n"
        "        x = \"\\U00e9\\n\";\n"
        "    };\n"
        "    \"two words\" =     (\n"
        "        1,\n"
        "        \"a b\"\n"
        "    );\n"
        "}");
    EXPECT_EQ(NSDictionary::dictionary()->description()->utf8(), "{\n}");
}

TEST_F(NSDictionaryTest, AnswersDynamicCalls)
{
    NSSend(changing, NSSelector("setObject:forKey:"), NSId(4), NSId("d"));
    EXPECT_THAT(NSSend<NSId>(changing, NSSelector("objectForKey:"), NSId("d")), Equals(4));
    EXPECT_EQ(NSSend<NSUInteger>(changing, NSSelector("count")), 4u);
    EXPECT_THAT(NSSend<NSId>(dictionary, NSSelector("allKeys")), Equals(NSArray::of("a", "b")));
}

}
