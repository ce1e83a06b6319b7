// Walks the method table of every class that a public header declares.
#include "LUMFoundation/LUMFoundation.h"
#include "core/method_tables.h"
#include "tests/core/declared_classes.h"
#include "tests/fixture.h"

#include <set>
#include <vector>

namespace {

[[maybe_unused]] std::ostream& operator<<(std::ostream& stream, const DeclaredClass& row)
{
    return stream << row.name;
}

struct MethodTablesTest : testing::TestWithParam<DeclaredClass> {
    const NSClass& type = GetParam().classObject();

    /// All tables that are the class's own: its methods and those of the extension sets on it.
    std::vector<const NSMethod*> methods() const
    {
        std::vector<const NSMethod*> all;
        for (const NSMethod& method : type.ownMethods())
            all.push_back(&method);
        for (auto table : type.extensions())
            for (const NSMethod& method : table)
                all.push_back(&method);
        return all;
    }
};

/// An object of any class, as far as dynamic calls can tell.
class ObjectOfClass : public NSObject {
public:
    static NSId make(const NSClass& type) { return NSAdopt<NSObject>(new ObjectOfClass(type)); }
    const NSClass& isa() const override { return mType; }

protected:
    explicit ObjectOfClass(const NSClass& type) : mType(type) { }
    ~ObjectOfClass() override = default;

private:
    const NSClass& mType;
};

TEST_P(MethodTablesTest, BelongToAClassOfThatName)
{
    EXPECT_EQ(type.name(), GetParam().name);
    EXPECT_EQ(NSClass::named(GetParam().name), &type);
}

TEST_P(MethodTablesTest, NameNoSelectorTwice)
{
    std::set<std::string_view> seen;
    for (const NSMethod* method : methods())
        EXPECT_TRUE(seen.insert(method->selector).second) << method->selector;
}

TEST_P(MethodTablesTest, HaveAllTheirMethodsFound)
{
    for (const NSMethod* method : methods())
        EXPECT_EQ(type.instanceMethod(NSSelector(method->selector)), method) << method->selector;
}

TEST_P(MethodTablesTest, HaveAllTheirSelectorsAnswered)
{
    NSId object = ObjectOfClass::make(type);
    for (const NSMethod* method : methods())
        EXPECT_TRUE(object->respondsToSelector(NSSelector(method->selector))) << method->selector;
}

INSTANTIATE_TEST_SUITE_P(Of, MethodTablesTest, testing::ValuesIn(kDeclaredClasses),
    [](const auto& row) { return std::string(row.param.name); });

struct ExtensionTablesTest : ObjectTest { };

std::set<std::string_view> selectorsOn(const NSClass& type)
{
    std::set<std::string_view> selectors;
    for (auto table : type.extensions())
        for (const NSMethod& method : table)
            selectors.insert(method.selector);
    return selectors;
}

TEST_F(ExtensionTablesTest, GiveArraysTheirOperations)
{
    EXPECT_EQ(selectorsOn(NSArray::classObject()),
        (std::set<std::string_view> { "bsearch:comparatorFunction:context:", "bsearch:selector:", "car",
            "cdr", "closestNumberToNumber:", "deepCopy", "hasPrefix:", "isPlistable",
            "makeObjectsPerformSelectorWithResults:", "makeObjectsPerformSelectorWithResults:withObject:",
            "makeObjectsPerformSelectorWithResults:withObjects:", "mutableDeepCopy", "reverseArray",
            "subarrayMatchingSelector:withObject:", "subsetOfArrayAtIndexes:", "valueForKey:" }));
}

TEST_F(ExtensionTablesTest, GiveMutableArraysTheirOperations)
{
    EXPECT_EQ(selectorsOn(NSMutableArray::classObject()),
        (std::set<std::string_view> { "dequeueObjectFromFront", "insertObjects:atIndex:",
            "moveObjectAtIndex:toIndex:", "moveObjectsAtIndexes:toIndex:", "removeObjects:",
            "replaceObject:withObject:", "replaceObjectIdenticalTo:withObject:", "reverse" }));
}

}
