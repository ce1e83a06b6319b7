#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "platform/collections/hash_table.h"

#include <algorithm>
#include <iterator>

// What is taken out of an array ends last, when the array is whole again: the end of an object may run
// foreign code that looks at the array.

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"addObject:", &NSMutableArray::addObject>(),
    NSMethodOf<"addObjectsFromArray:", &NSMutableArray::addObjectsFromArray>(),
    NSMethodOf<"insertObject:atIndex:", &NSMutableArray::insertObject>(),
    NSMethodOf<"removeObjectAtIndex:", &NSMutableArray::removeObjectAtIndex>(),
    NSMethodOf<"removeLastObject", &NSMutableArray::removeLastObject>(),
    NSMethodOf<"removeObjectsInRange:", &NSMutableArray::removeObjectsInRange>(),
    NSMethodOf<"removeObject:", &NSMutableArray::removeObject>(),
    NSMethodOf<"removeObjectIdenticalTo:", &NSMutableArray::removeObjectIdenticalTo>(),
    NSMethodOf<"removeObjectsInArray:", &NSMutableArray::removeObjectsInArray>(),
    NSMethodOf<"removeAllObjects", &NSMutableArray::removeAllObjects>(),
    NSMethodOf<"replaceObjectAtIndex:withObject:", &NSMutableArray::replaceObjectAtIndex>(),
    NSMethodOf<"exchangeObjectAtIndex:withObjectAtIndex:", &NSMutableArray::exchangeObjectAtIndex>(),
    NSMethodOf<"replaceObjectsInRange:withObjectsFromArray:", &NSMutableArray::replaceObjectsInRange>(),
    NSMethodOf<"setArray:", &NSMutableArray::setArray>(),
};

}

const NSClass& NSMutableArray::classObject()
{
    static const NSClass& type = NSClass::define("NSMutableArray", &NSArray::classObject(), kMethods);
    return type;
}

NSMutableArray::NSMutableArray(std::vector<NSId> objects) : NSArray(std::move(objects)) { }

NSMutableArray::~NSMutableArray() = default;

NSRef<NSMutableArray> NSMutableArray::array()
{
    return NSMake<NSMutableArray>();
}

NSRef<NSMutableArray> NSMutableArray::arrayWithCapacity(NSUInteger capacity)
{
    // A hint: an absurd one reserves nothing.
    constexpr NSUInteger kMaxReserved = 1'000'000;
    auto array = NSMake<NSMutableArray>();
    array->mObjects.reserve(std::min(capacity, kMaxReserved));
    return array;
}

NSRef<NSMutableArray> NSMutableArray::arrayWithArray(const NSRef<NSArray>& array)
{
    return array ? NSCast<NSMutableArray>(array->mutableCopy()) : NSMutableArray::array();
}

void NSMutableArray::addObject(const NSId& object)
{
    mObjects.push_back(required(object, "addObject:"));
    ++mMutations;
}

void NSMutableArray::addObjectsFromArray(const NSRef<NSArray>& other)
{
    replaceObjectsInRange({ count(), 0 }, other);
}

void NSMutableArray::replaceObjectsInRange(NSRange range, const NSRef<NSArray>& other)
{
    checkRange("replaceObjectsInRange:withObjectsFromArray:", range);
    // Holds the new elements first, then the replaced ones, of which there may be more.
    const NSUInteger added = other ? other->count() : 0;
    std::vector<NSId> spare(std::max(added, range.length));
    if (spare.empty())
        return;
    for (NSUInteger at = 0; at < added; ++at)
        spare[at] = other->objectAtIndex(at);

    auto place = [&](NSUInteger index) { return mObjects.begin() + static_cast<std::ptrdiff_t>(index); };
    const NSUInteger exchanged = std::min(added, range.length);
    const auto rest = spare.begin() + static_cast<std::ptrdiff_t>(exchanged);
    const auto end = spare.begin() + static_cast<std::ptrdiff_t>(added);
    if (added > exchanged) // what may lack memory comes before any change
        mObjects.insert(place(range.end()), std::make_move_iterator(rest), std::make_move_iterator(end));
    std::swap_ranges(spare.begin(), rest, place(range.location));
    if (range.length > exchanged) {
        std::move(place(range.location + exchanged), place(range.end()), rest);
        mObjects.erase(place(range.location + exchanged), place(range.end()));
    }
    ++mMutations;
}

void NSMutableArray::insertObject(const NSId& object, NSUInteger index)
{
    if (index > count())
        raiseRange("insertObject:atIndex:", index);
    NSId kept = required(object, "insertObject:atIndex:");
    mObjects.insert(mObjects.begin() + static_cast<std::ptrdiff_t>(index), std::move(kept));
    ++mMutations;
}

void NSMutableArray::removeObjectAtIndex(NSUInteger index)
{
    if (index >= count())
        raiseRange("removeObjectAtIndex:", index);
    removeObjectsInRange({ index, 1 });
}

void NSMutableArray::removeLastObject()
{
    if (count() == 0)
        raiseRange("removeLastObject", 0);
    removeObjectsInRange({ count() - 1, 1 });
}

void NSMutableArray::removeObjectsInRange(NSRange range)
{
    checkRange("removeObjectsInRange:", range);
    auto first = mObjects.begin() + static_cast<std::ptrdiff_t>(range.location);
    auto last = first + static_cast<std::ptrdiff_t>(range.length);
    std::vector<NSId> removed(std::make_move_iterator(first), std::make_move_iterator(last));
    mObjects.erase(first, last);
    ++mMutations;
}

template<typename Matches> void NSMutableArray::removeMatching(const Matches& matches)
{
    std::vector<bool> matched;
    matched.reserve(count());
    for (const NSId& object : *this) // raises should isEqual change the array
        matched.push_back(matches(object));
    std::vector<NSId> removed;
    NSUInteger kept = 0;
    for (NSUInteger at = 0; at < matched.size(); ++at) {
        if (matched[at])
            removed.push_back(std::move(mObjects[at]));
        else if (kept++ != at)
            mObjects[kept - 1] = std::move(mObjects[at]);
    }
    mObjects.resize(kept);
    if (!removed.empty())
        ++mMutations;
}

void NSMutableArray::removeObject(const NSId& object)
{
    if (!object)
        return;
    NSId kept = object; // it may be an element, held by the array alone
    removeMatching([&](const NSId& element) { return element == kept || kept->isEqual(element); });
}

void NSMutableArray::removeObjectIdenticalTo(const NSId& object)
{
    NSId kept = object;
    removeMatching([&](const NSId& element) { return element == kept; });
}

void NSMutableArray::removeObjectsInArray(const NSRef<NSArray>& others)
{
    if (!others || others->count() == 0)
        return;
    platform::SetTable table;
    for (const NSId& other : others)
        table.insert(other, [&] { return other; });
    removeMatching([&](const NSId& element) { return table.find(element) != platform::SetTable::kNone; });
}

void NSMutableArray::removeAllObjects()
{
    std::vector<NSId> removed;
    removed.swap(mObjects);
    ++mMutations;
}

void NSMutableArray::replaceObjectAtIndex(NSUInteger index, const NSId& object)
{
    if (index >= count())
        raiseRange("replaceObjectAtIndex:withObject:", index);
    NSId replaced = required(object, "replaceObjectAtIndex:withObject:");
    swap(replaced, mObjects[index]);
    ++mMutations;
}

void NSMutableArray::setArray(const NSRef<NSArray>& other)
{
    std::vector<NSId> replaced = NSMutableArray::arrayWithArray(other)->mObjects;
    replaced.swap(mObjects);
    ++mMutations;
}

NSId NSMutableArray::copy() const
{
    return NSMake<NSArray>(mObjects);
}
