#include "LUMPlatform/NSIndexSet.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

#include <algorithm>

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"count", &NSIndexSet::count>(),
    NSMethodOf<"firstIndex", &NSIndexSet::firstIndex>(),
    NSMethodOf<"lastIndex", &NSIndexSet::lastIndex>(),
    NSMethodOf<"indexGreaterThanIndex:", &NSIndexSet::indexGreaterThanIndex>(),
    NSMethodOf<"containsIndex:", &NSIndexSet::containsIndex>(),
    NSMethodOf<"isEqualToIndexSet:", &NSIndexSet::isEqualToIndexSet>(),
};
constexpr NSMethod kMutableMethods[] = {
    NSMethodOf<"addIndex:", &NSMutableIndexSet::addIndex>(),
    NSMethodOf<"addIndexesInRange:", &NSMutableIndexSet::addIndexesInRange>(),
};

}

const NSClass& NSIndexSet::classObject()
{
    static const NSClass& type = NSClass::define("NSIndexSet", &NSObject::classObject(), kMethods);
    return type;
}

const NSClass& NSMutableIndexSet::classObject()
{
    static const NSClass& type =
        NSClass::define("NSMutableIndexSet", &NSIndexSet::classObject(), kMutableMethods);
    return type;
}

NSIndexSet::~NSIndexSet() = default;
NSMutableIndexSet::~NSMutableIndexSet() = default;

NSRef<NSIndexSet> NSIndexSet::of(std::initializer_list<NSUInteger> indexes)
{
    auto set = NSMake<NSIndexSet>();
    for (NSUInteger index : indexes)
        set->add({ index, 1 });
    return set;
}

NSRef<NSIndexSet> NSIndexSet::indexSet()
{
    return NSMake<NSIndexSet>();
}

NSRef<NSIndexSet> NSIndexSet::indexSetWithIndex(NSUInteger index)
{
    return of({ index });
}

NSRef<NSIndexSet> NSIndexSet::indexSetWithIndexesInRange(NSRange range)
{
    auto set = NSMake<NSIndexSet>();
    set->add(range);
    return set;
}

void NSIndexSet::add(NSRange range)
{
    if (range.length > NSNotFound || range.location > NSNotFound - range.length)
        throw NSException(NSRangeException,
            "an index set cannot hold {" + std::to_string(range.location) + ", "
                + std::to_string(range.length) + "}: it reaches past the last index");
    if (range.length == 0)
        return;
    // All ranges that overlap or touch the new one become one with it.
    auto first = std::find_if(
        mRanges.begin(), mRanges.end(), [&](const NSRange& other) { return other.end() >= range.location; });
    auto last = first;
    NSUInteger end = range.end();
    for (; last != mRanges.end() && last->location <= end; ++last) {
        range.location = std::min(range.location, last->location);
        end = std::max(end, last->end());
    }
    range.length = end - range.location;
    mRanges.insert(mRanges.erase(first, last), range);
    ++mMutations;
}

NSUInteger NSIndexSet::count() const
{
    NSUInteger count = 0;
    for (const NSRange& range : mRanges)
        count += range.length;
    return count;
}

NSUInteger NSIndexSet::firstIndex() const
{
    return mRanges.empty() ? NSNotFound : mRanges.front().location;
}

NSUInteger NSIndexSet::lastIndex() const
{
    return mRanges.empty() ? NSNotFound : mRanges.back().end() - 1;
}

NSUInteger NSIndexSet::nextPosition(NSUInteger position) const
{
    auto range = std::upper_bound(mRanges.begin(), mRanges.end(), position,
        [](NSUInteger index, const NSRange& other) { return index < other.end(); });
    return range == mRanges.end() ? NSNotFound : std::max(position, range->location);
}

NSUInteger NSIndexSet::indexGreaterThanIndex(NSUInteger index) const
{
    return index < NSNotFound ? nextPosition(index + 1) : NSNotFound;
}

bool NSIndexSet::containsIndex(NSUInteger index) const
{
    return index < NSNotFound && nextPosition(index) == index;
}

bool NSIndexSet::isEqualToIndexSet(const NSRef<NSIndexSet>& other) const
{
    return other && other->mRanges == mRanges;
}

bool NSIndexSet::isEqual(const NSId& other) const
{
    return isEqualToIndexSet(NSCast<NSIndexSet>(other));
}

NSUInteger NSIndexSet::hash() const
{
    return count() + firstIndex();
}

NSRef<NSString> NSIndexSet::description() const
{
    std::string text = "(";
    for (const NSRange& range : mRanges) {
        text += text.size() > 1 ? " " : "";
        text += std::to_string(range.location);
        if (range.length > 1)
            text += "-" + std::to_string(range.end() - 1);
    }
    return text + ")";
}

NSId NSIndexSet::copy() const
{
    return NSShare(const_cast<NSIndexSet*>(this));
}

NSId NSIndexSet::mutableCopy() const
{
    return NSMake<NSMutableIndexSet>(mRanges);
}

NSRef<NSMutableIndexSet> NSMutableIndexSet::indexSet()
{
    return NSMake<NSMutableIndexSet>();
}

void NSMutableIndexSet::addIndex(NSUInteger index)
{
    add({ index, 1 });
}

void NSMutableIndexSet::addIndexesInRange(NSRange range)
{
    add(range);
}

NSId NSMutableIndexSet::copy() const
{
    return NSMake<NSIndexSet>(mRanges);
}
