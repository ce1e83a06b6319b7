#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSSortDescriptor.h"
#include "LUMPlatform/NSString.h"

#include <algorithm>

namespace {

/// A reference that shares an object without counting it: the list being sorted keeps it alive.
class Uncounted {
public:
    explicit Uncounted(NSObject* object) : mReference(NSAdopt(object)) { }
    ~Uncounted() { (void)mReference.leak(); }
    Uncounted(const Uncounted&) = delete;
    Uncounted& operator=(const Uncounted&) = delete;
    operator const NSId&() const { return mReference; }

private:
    NSId mReference;
};

/// So many places behind the list may be read, and hold null.
constexpr std::size_t kAhead = 16;

/// Has the object fetched that is compared some steps later. Objects lie anywhere in memory, and waiting for
/// them takes longer than all else a merge does.
void fetchAhead(NSObject* const* place)
{
    const auto object = reinterpret_cast<std::uintptr_t>(place[kAhead]);
    __builtin_prefetch(reinterpret_cast<const void*>(object));
    __builtin_prefetch(reinterpret_cast<const void*>(object + 32));
}

/// Merges the sorted runs [first, middle) and [middle, last) into `out`; of equals the left goes first.
template<typename Before>
void mergeRuns(NSObject** first, NSObject** middle, NSObject** last, NSObject** out, const Before& before)
{
    NSObject** left = first;
    NSObject** right = middle;
    while (left != middle && right != last) {
        const bool fromRight = before(*right, *left);
        NSObject** next = fromRight ? right : left;
        fetchAhead(next);
        *out++ = *next;
        right += fromRight;
        left += !fromRight;
    }
    out = std::copy(left, middle, out);
    std::copy(right, last, out);
}

/// A stable merge sort. Unlike the standard ones it stays inside the list whatever the comparison answers: it
/// runs foreign code, which may contradict itself.
template<typename Before> void sortStably(std::vector<NSObject*>& objects, const Before& before)
{
    constexpr std::size_t kRun = 8;
    const std::size_t count = objects.size();
    objects.resize(count + kAhead);
    for (std::size_t start = 0; start < count; start += kRun)
        for (std::size_t at = start + 1; at < std::min(start + kRun, count); ++at) {
            NSObject* object = objects[at];
            std::size_t hole = at;
            for (; hole > start && before(object, objects[hole - 1]); --hole)
                objects[hole] = objects[hole - 1];
            objects[hole] = object;
        }
    std::vector<NSObject*> merged(count + kAhead);
    for (std::size_t run = kRun; run < count; run *= 2) {
        for (std::size_t start = 0; start < count; start += 2 * run)
            mergeRuns(&objects[start], objects.data() + std::min(start + run, count),
                objects.data() + std::min(start + 2 * run, count), &merged[start], before);
        objects.swap(merged);
    }
    objects.resize(count);
}

/// `objects` in the order of `compare`, which may change or drop the array they come from: they are shared.
template<typename Compare> NSRef<NSArray> sorted(const std::vector<NSId>& objects, const Compare& compare)
{
    std::vector<NSId> kept = objects;
    std::vector<NSObject*> order;
    order.reserve(kept.size());
    for (const NSId& object : kept)
        order.push_back(object.get());
    sortStably(order, [&](NSObject* a, NSObject* b) { return compare(Uncounted(a), Uncounted(b)) < 0; });
    for (NSId& object : kept)
        (void)object.leak();
    std::transform(order.begin(), order.end(), kept.begin(), NSAdopt<NSObject>);
    return NSMake<NSArray>(std::move(kept));
}

}

NSRef<NSArray> NSArray::sortedArrayUsingComparator(const NSComparator& comparator) const
{
    if (!comparator)
        throw NSException(NSInvalidArgumentException, "an array cannot be sorted without a comparison");
    return sorted(mObjects, comparator);
}

NSRef<NSArray> NSArray::sortedArrayUsingSelector(NSSelector compare) const
{
    return sorted(mObjects, [&](const NSId& a, const NSId& b) { return NSSend<NSInteger>(*a, compare, b); });
}

NSRef<NSArray> NSArray::sortedArrayUsingDescriptors(const NSRef<NSArray>& descriptors) const
{
    std::vector<NSRef<NSSortDescriptor>> rules;
    for (NSUInteger at = 0; descriptors && at < descriptors->count(); ++at) {
        auto rule = NSCast<NSSortDescriptor>(descriptors->objectAtIndex(at));
        if (!rule)
            throw NSException(NSInvalidArgumentException, "an array is sorted by sort descriptors only");
        rules.push_back(std::move(rule));
    }
    return sorted(mObjects, [&](const NSId& a, const NSId& b) {
        NSComparisonResult result = NSOrderedSame;
        for (std::size_t at = 0; at < rules.size() && result == NSOrderedSame; ++at)
            result = rules[at]->compareObject(a, b);
        return result;
    });
}
