#include "LUMFoundation/LUMArray.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSIndexSet.h"
#include "LUMPlatform/NSSortDescriptor.h"
#include "LUMPlatform/NSString.h"
#include "core/extension_operation.h"
#include "core/method_tables.h"

namespace {

NSId first(const NSRef<NSArray>& array)
{
    return array->count() > 0 ? array->objectAtIndex(0) : nullptr;
}

NSRef<NSArray> rest(const NSRef<NSArray>& array)
{
    return array->count() > 0 ? array->subarrayWithRange({ 1, array->count() - 1 }) : nullptr;
}

NSRef<NSMutableArray> mutableCopies(const NSRef<NSArray>& array)
{
    auto copies = NSMutableArray::arrayWithCapacity(array->count());
    for (const NSId& element : array)
        copies->addObject(element->copy());
    return copies;
}

NSRef<NSArray> copies(const NSRef<NSArray>& array)
{
    return NSArray::arrayWithArray(LUMArray::mutableDeepCopy(array));
}

NSRef<NSArray> reversed(const NSRef<NSArray>& array)
{
    auto copy = NSMutableArray::arrayWithArray(array);
    LUMArray::reverse(copy);
    return NSArray::arrayWithArray(copy);
}

NSRef<NSMutableArray> matching(const NSRef<NSArray>& array, NSSelector selector, const NSId& object)
{
    auto descriptor = NSSortDescriptor::initWithKey(nullptr, false, selector);
    auto matches = NSMutableArray::array();
    for (const NSId& element : array)
        if (descriptor->compareObject(element, object) == NSOrderedSame)
            matches->addObject(element);
    return matches;
}

NSRef<NSMutableArray> subset(const NSRef<NSArray>& array, const NSRef<NSIndexSet>& indexes)
{
    auto elements = NSMutableArray::array();
    if (indexes)
        for (NSUInteger index : indexes)
            elements->addObject(array->objectAtIndex(index));
    return elements;
}

bool beginsWith(const NSRef<NSArray>& array, const NSRef<NSArray>& prefix)
{
    if (!prefix || prefix->count() > array->count())
        return false;
    return array->subarrayWithRange({ 0, prefix->count() })->isEqual(prefix);
}

using Car = lum::ExtensionOperation<"car", &first>;
using Cdr = lum::ExtensionOperation<"cdr", &rest>;
using DeepCopy = lum::ExtensionOperation<"deepCopy", &copies>;
using MutableDeepCopy = lum::ExtensionOperation<"mutableDeepCopy", &mutableCopies>;
using ReverseArray = lum::ExtensionOperation<"reverseArray", &reversed>;
using SubarrayMatching = lum::ExtensionOperation<"subarrayMatchingSelector:withObject:", &matching>;
using SubsetAtIndexes = lum::ExtensionOperation<"subsetOfArrayAtIndexes:", &subset>;
using HasPrefix = lum::ExtensionOperation<"hasPrefix:", &beginsWith>;

constexpr NSMethod kMethods[] = {
    Car::method(),
    Cdr::method(),
    DeepCopy::method(),
    MutableDeepCopy::method(),
    ReverseArray::method(),
    SubarrayMatching::method(),
    SubsetAtIndexes::method(),
    HasPrefix::method(),
};

}

std::span<const NSMethod> lum::arrayMethods()
{
    return kMethods;
}

NSId LUMArray::car(const NSRef<NSArray>& array)
{
    return Car::call(array);
}

NSRef<NSArray> LUMArray::cdr(const NSRef<NSArray>& array)
{
    return Cdr::call(array);
}

NSRef<NSArray> LUMArray::deepCopy(const NSRef<NSArray>& array)
{
    return DeepCopy::call(array);
}

NSRef<NSMutableArray> LUMArray::mutableDeepCopy(const NSRef<NSArray>& array)
{
    return MutableDeepCopy::call(array);
}

NSRef<NSArray> LUMArray::reverseArray(const NSRef<NSArray>& array)
{
    return ReverseArray::call(array);
}

NSRef<NSMutableArray> LUMArray::subarrayMatchingSelector(
    const NSRef<NSArray>& array, NSSelector selector, const NSId& object)
{
    return SubarrayMatching::call(array, selector, object);
}

NSRef<NSMutableArray> LUMArray::subsetOfArrayAtIndexes(
    const NSRef<NSArray>& array, const NSRef<NSIndexSet>& indexes)
{
    return SubsetAtIndexes::call(array, indexes);
}

bool LUMArray::hasPrefix(const NSRef<NSArray>& array, const NSRef<NSArray>& prefix)
{
    return HasPrefix::call(array, prefix);
}
