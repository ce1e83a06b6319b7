#include "LUMFoundation/LUMArray.h"
#include "LUMPlatform/NSArray.h"
#include "core/compare_objects.h"
#include "core/extension_operation.h"
#include "core/method_tables.h"

namespace {

NSUInteger searchByFunction(
    const NSRef<NSArray>& array, const NSId& value, NSComparisonFunction function, void* context)
{
    return NSArraySearch(array, value, function, context);
}

NSComparisonResult compare(const NSId& first, const NSId& second, void* context)
{
    return static_cast<NSComparisonResult>(
        lum::CompareObjectsWithSelector(first, second, *static_cast<const NSSelector*>(context)));
}

NSUInteger searchBySelector(const NSRef<NSArray>& array, const NSId& value, NSSelector selector)
{
    return LUMArray::bsearchComparatorFunction(array, value, &compare, &selector);
}

using SearchByFunction = lum::ExtensionOperation<"bsearch:comparatorFunction:context:", &searchByFunction>;
using SearchBySelector = lum::ExtensionOperation<"bsearch:selector:", &searchBySelector>;

constexpr NSMethod kMethods[] = {
    SearchByFunction::method(),
    SearchBySelector::method(),
};

}

std::span<const NSMethod> lum::arraySearchMethods()
{
    return kMethods;
}

NSUInteger LUMArray::bsearchComparatorFunction(
    const NSRef<NSArray>& array, const NSId& value, NSComparisonFunction function, void* context)
{
    return SearchByFunction::call(array, value, function, context);
}

NSUInteger LUMArray::bsearchSelector(const NSRef<NSArray>& array, const NSId& value, NSSelector selector)
{
    return SearchBySelector::call(array, value, selector);
}
