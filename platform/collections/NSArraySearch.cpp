#include "LUMPlatform/NSArraySearch.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

NSUInteger NSArraySearch(
    const NSRef<NSArray>& sorted, const NSId& value, NSComparisonFunction compare, void* context)
{
    if (!compare)
        throw NSException(NSInvalidArgumentException, "a search needs a function to compare by");
    const NSUInteger count = sorted ? sorted->count() : 0;
    // objectAtIndex keeps the element alive: comparing may run foreign code that takes it out of the array.
    auto isLess = [&](NSUInteger at) { return compare(sorted->objectAtIndex(at), value, context) < 0; };

    // The ends come first, since sorted lists mostly grow at one of them.
    if (count == 0)
        return 0;
    if (isLess(count - 1))
        return count;
    if (compare(value, sorted->objectAtIndex(0), context) < 0)
        return 0;
    // With a branch on what the comparison said: a processor that guesses it fetches the next element
    // meanwhile, and waiting for memory costs more than half of the guesses being wrong.
    NSUInteger low = 0; // what comes before is less, and one of it and the `length` next is the answer
    for (NSUInteger length = count - 1; length > 0;) {
        const NSUInteger half = (length + 1) / 2;
        if (isLess(low + half - 1)) {
            low += half;
            length -= half;
        } else
            length = half - 1;
    }
    return low;
}
