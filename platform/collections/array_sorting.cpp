#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSSortDescriptor.h"

#include <algorithm>

namespace {

/// Merges the sorted runs [first, middle) and [middle, last) into `out`; of equals the left goes first.
template<typename Before>
void mergeRuns(NSId* first, NSId* middle, NSId* last, NSId* out, const Before& before)
{
    NSId* left = first;
    NSId* right = middle;
    while (left != middle && right != last)
        *out++ = std::move(before(*right, *left) ? *right++ : *left++);
    out = std::move(left, middle, out);
    std::move(right, last, out);
}

/// A stable merge sort. Unlike the standard ones it stays inside the list whatever the comparison answers: it
/// runs foreign code, which may contradict itself.
template<typename Before> void sortStably(std::vector<NSId>& objects, const Before& before)
{
    constexpr size_t kRun = 8;
    const size_t count = objects.size();
    for (size_t start = 0; start < count; start += kRun)
        for (size_t at = start + 1; at < std::min(start + kRun, count); ++at)
            for (size_t hole = at; hole > start && before(objects[hole], objects[hole - 1]); --hole)
                std::swap(objects[hole], objects[hole - 1]);
    std::vector<NSId> merged(count);
    for (size_t run = kRun; run < count; run *= 2) {
        for (size_t start = 0; start < count; start += 2 * run)
            mergeRuns(&objects[start], objects.data() + std::min(start + run, count),
                objects.data() + std::min(start + 2 * run, count), &merged[start], before);
        objects.swap(merged);
    }
}

}

NSRef<NSArray> NSArray::sortedArrayUsingComparator(const NSComparator& comparator) const
{
    std::vector<NSId> objects = mObjects;
    sortStably(objects, [&](const NSId& a, const NSId& b) { return comparator(a, b) == NSOrderedAscending; });
    return NSMake<NSArray>(std::move(objects));
}

NSRef<NSArray> NSArray::sortedArrayUsingSelector(NSSelector compare) const
{
    std::vector<NSId> objects = mObjects;
    sortStably(objects, [&](const NSId& a, const NSId& b) { return NSSend<NSInteger>(*a, compare, b) < 0; });
    return NSMake<NSArray>(std::move(objects));
}

NSRef<NSArray> NSArray::sortedArrayUsingDescriptors(const NSRef<NSArray>& descriptors) const
{
    std::vector<NSRef<NSSortDescriptor>> rules;
    for (NSUInteger at = 0; descriptors && at < descriptors->count(); ++at)
        if (auto rule = descriptors->objectAtIndex<NSSortDescriptor>(at))
            rules.push_back(std::move(rule));
    return sortedArrayUsingComparator([&](const NSId& a, const NSId& b) {
        NSComparisonResult result = NSOrderedSame;
        for (size_t at = 0; at < rules.size() && result == NSOrderedSame; ++at)
            result = rules[at]->compareObject(a, b);
        return result;
    });
}
