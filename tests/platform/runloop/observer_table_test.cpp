#include "platform/runloop/observer_table.h"

#include "tests/fixture.h"

#include <map>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <vector>

namespace {

const NSSelector kTell("tell:");

struct ObserverTableTest : ObjectTest {
    static std::size_t matchCount(
        platform::ObserverTable& table, const NSRef<NSString>& name, const NSId& object)
    {
        auto matches = table.matches(name, object);
        std::size_t count = 0;
        for (std::size_t i = 0; i < matches.count; ++i)
            for (const auto& observation : matches.lists[i])
                count += !observation->isRemoved && observation->wantsObject(object.get());
        return count;
    }

    platform::ObserverTable table;
};

TEST_F(ObserverTableTest, ForgetsRegistrationsOfObserversThatHaveEnded)
{
    for (int i = 0; i < 10000; ++i)
        table.add(NSMake<NSObject>(), kTell, "N", nullptr);
    EXPECT_LT(table.count(), 200u);
}

TEST_F(ObserverTableTest, ForgetsRegistrationsForObjectsThatHaveEnded)
{
    NSId observer = NSMake<NSObject>();
    for (int i = 0; i < 10000; ++i)
        table.add(observer, kTell, i % 2 ? "N" : nullptr, NSMake<NSObject>());
    EXPECT_LT(table.count(), 200u);
}

TEST_F(ObserverTableTest, KeepsTheRegistrationsThatLiveAmongThoseThatEnd)
{
    std::vector<NSId> living;
    for (int i = 0; i < 1000; ++i) {
        table.add(living.emplace_back(NSMake<NSObject>()), kTell, "N", nullptr);
        table.add(NSMake<NSObject>(), kTell, "N", nullptr);
    }
    EXPECT_EQ(matchCount(table, "N", nullptr), 1000u + (table.count() - 1000u));
    for (const NSId& observer : living)
        table.remove(observer, "N", nullptr);
    EXPECT_LE(matchCount(table, "N", nullptr), 1000u);
}

TEST_F(ObserverTableTest, KeepsASnapshotAsItWas)
{
    NSId a = NSMake<NSObject>();
    NSId b = NSMake<NSObject>();
    table.add(a, kTell, "N", nullptr);
    auto matches = table.matches("N", nullptr);
    for (int i = 0; i < 100; ++i)
        table.add(b, kTell, "N", nullptr);
    table.remove(a, nullptr, nullptr);
    ASSERT_EQ(matches.count, 1u);
    ASSERT_EQ(matches.lists[0].end() - matches.lists[0].begin(), 1);
    EXPECT_TRUE((*matches.lists[0].begin())->isRemoved);
    EXPECT_EQ(matchCount(table, "N", nullptr), 100u);
}

/// The rules as a loop over all registrations, to compare with.
struct PlainTable {
    struct Entry {
        int observer;
        int name;
        int object;
    };

    void remove(int observer, int name, int object)
    {
        std::erase_if(entries, [&](const Entry& entry) {
            return entry.observer == observer && (!name || entry.name == name)
                && (!object || entry.object == object);
        });
    }
    std::vector<int> matches(int name, int object) const
    {
        std::vector<int> found;
        for (const Entry& entry : entries)
            if ((!entry.name || entry.name == name) && (!entry.object || entry.object == object))
                found.push_back(entry.observer);
        return found;
    }

    std::vector<Entry> entries;
};

RC_GTEST_PROP(ObserverTableLaw, FindsWhatALoopOverAllRegistrationsFinds, ())
{
    constexpr int kKinds = 4; // 0 is null, or the absence of an observer
    std::vector<NSId> objects { nullptr };
    std::vector<NSRef<NSString>> names { nullptr };
    for (int i = 1; i < kKinds; ++i) {
        objects.push_back(NSMake<NSObject>());
        names.push_back(NSRef<NSString>(std::string("N") + std::to_string(i)));
    }
    platform::ObserverTable table;
    PlainTable plain;
    auto at = [](const auto& list, int index) { return list[static_cast<std::size_t>(index)]; };

    auto steps = *rc::gen::container<std::vector<std::array<int, 4>>>(
        rc::gen::container<std::array<int, 4>>(rc::gen::inRange(0, kKinds)));
    for (const auto& [action, who, name, object] : steps) {
        int observer = std::max(who, 1);
        if (action == 0) {
            table.remove(at(objects, observer), at(names, name), at(objects, object));
            plain.remove(observer, name, object);
        } else {
            table.add(at(objects, observer), kTell, at(names, name), at(objects, object));
            plain.entries.push_back({ observer, name, object });
        }
    }

    for (int name = 1; name < kKinds; ++name)
        for (int object = 0; object < kKinds; ++object) {
            std::map<std::uint64_t, NSId> found; // by order of registration
            auto matches = table.matches(at(names, name), at(objects, object));
            for (std::size_t i = 0; i < matches.count; ++i)
                for (const auto& observation : matches.lists[i])
                    if (!observation->isRemoved)
                        found.emplace(observation->order, observation->observer.get());
            std::vector<int> observers;
            for (const auto& [order, observer] : found)
                observers.push_back(
                    static_cast<int>(std::find(objects.begin(), objects.end(), observer) - objects.begin()));
            RC_ASSERT(observers == plain.matches(name, object));
        }
    RC_ASSERT(table.count() == plain.entries.size());
}

}
