#include "LUMFoundation/LUMArray.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSMethodSignature.h"
#include "LUMPlatform/NSNull.h"
#include "LUMPlatform/NSString.h"
#include "core/extension_operation.h"
#include "core/method_tables.h"

constinit const NSStringConstant LUMArrayNonIdReturnType("LUMArrayNonIdReturnType");
constinit const NSStringConstant LUMArrayCountsDontMatch("LUMArrayCountsDontMatch");

namespace {

/// Whether sending `selector` to `element` gives an object.
bool answersWithObject(const NSId& element, NSSelector selector)
{
    auto signature = element->methodSignatureForSelector(selector);
    if (!signature)
        return false;
    // Deliberate: only a method that returns nothing is a mistake; one that returns a number is passed over.
    if (signature->methodReturnLength() == 0)
        throw NSException(LUMArrayNonIdReturnType, "At least one object does not return a type of id.");
    return std::string_view(signature->methodReturnType()) == "@";
}

/// Collects what `send(element, index)` gives for each element that answers with an object.
template<typename Send>
NSRef<NSMutableArray> collect(const NSRef<NSArray>& array, NSSelector selector, const Send& send)
{
    auto results = NSMutableArray::array();
    // By index and with a fresh count, since a method may change the very array it is called from.
    for (NSUInteger index = 0; index < array->count(); ++index) {
        const NSId element = array->objectAtIndex(index);
        if (!answersWithObject(element, selector))
            continue;
        const NSId result = send(element, index);
        results->addObject(result ? result : NSNull::null());
    }
    return results;
}

NSRef<NSMutableArray> results(const NSRef<NSArray>& array, NSSelector selector)
{
    return collect(
        array, selector, [&](const NSId& element, NSUInteger) { return NSSend<NSId>(element, selector); });
}

NSRef<NSMutableArray> resultsWithObject(const NSRef<NSArray>& array, NSSelector selector, const NSId& object)
{
    return collect(array, selector,
        [&](const NSId& element, NSUInteger) { return NSSend<NSId>(element, selector, object); });
}

NSRef<NSMutableArray> resultsWithObjects(
    const NSRef<NSArray>& array, NSSelector selector, const NSRef<NSArray>& objects)
{
    if ((objects ? objects->count() : 0) != array->count())
        throw NSException(
            LUMArrayCountsDontMatch, "Number of argument objects doesn't match count of this array.");
    return collect(array, selector, [&](const NSId& element, NSUInteger index) {
        return NSSend<NSId>(element, selector, objects->objectAtIndex(index));
    });
}

using Results = lum::ExtensionOperation<"makeObjectsPerformSelectorWithResults:", &results>;
using ResultsWithObject =
    lum::ExtensionOperation<"makeObjectsPerformSelectorWithResults:withObject:", &resultsWithObject>;
using ResultsWithObjects =
    lum::ExtensionOperation<"makeObjectsPerformSelectorWithResults:withObjects:", &resultsWithObjects>;

constexpr NSMethod kMethods[] = {
    Results::method(),
    ResultsWithObject::method(),
    ResultsWithObjects::method(),
};

}

std::span<const NSMethod> lum::arrayPerformingMethods()
{
    return kMethods;
}

NSRef<NSMutableArray> LUMArray::makeObjectsPerformSelectorWithResults(
    const NSRef<NSArray>& array, NSSelector selector)
{
    return Results::call(array, selector);
}

NSRef<NSMutableArray> LUMArray::makeObjectsPerformSelectorWithResultsWithObject(
    const NSRef<NSArray>& array, NSSelector selector, const NSId& object)
{
    return ResultsWithObject::call(array, selector, object);
}

NSRef<NSMutableArray> LUMArray::makeObjectsPerformSelectorWithResultsWithObjects(
    const NSRef<NSArray>& array, NSSelector selector, const NSRef<NSArray>& objects)
{
    return ResultsWithObjects::call(array, selector, objects);
}
