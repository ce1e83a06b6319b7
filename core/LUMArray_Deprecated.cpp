#include "LUMFoundation/LUMArray_Deprecated.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSNumber.h"
#include "core/extension_operation.h"
#include "core/method_tables.h"

#include <cmath>

namespace {

template<typename Value, typename Boxed>
NSRef<NSMutableArray> numbers(const Value* values, NSUInteger count, Boxed (*box)(Value))
{
    auto array = NSMutableArray::array();
    for (NSUInteger index = 0; values && index < count; ++index)
        array->addObject(box(values[index]));
    return array;
}

NSId closest(const NSRef<NSArray>& array, const NSRef<NSNumber>& number)
{
    static const NSSelector doubleValue("doubleValue");
    const double target = number ? number->doubleValue() : 0;
    NSId best;
    // Deliberate: the largest 32-bit distance is where the search begins, so nothing farther is ever found.
    double bestDistance = 4294967295.0;
    for (const NSId& element : array) {
        const double distance = std::abs(NSSend<double>(element, doubleValue) - target);
        if (distance < bestDistance) {
            best = element;
            bestDistance = distance;
        }
    }
    return best;
}

void removeAll(const NSRef<NSMutableArray>& array, const NSRef<NSArray>& objects)
{
    if (!objects)
        return;
    // One by one and by isEqual alone: removing a whole array at once would ask for hashes first.
    for (const NSId& object : NSArray::arrayWithArray(objects))
        array->removeObject(object);
}

using ClosestNumber = lum::ExtensionOperation<"closestNumberToNumber:", &closest>;
using RemoveObjects = lum::ExtensionOperation<"removeObjects:", &removeAll>;

constexpr NSMethod kMethods[] = { ClosestNumber::method() };
constexpr NSMethod kMutableMethods[] = { RemoveObjects::method() };

}

std::span<const NSMethod> lum::deprecatedArrayMethods()
{
    return kMethods;
}

std::span<const NSMethod> lum::deprecatedMutableArrayMethods()
{
    return kMutableMethods;
}

NSRef<NSMutableArray> LUMArray_Deprecated::arrayWithUInt32Values(
    const std::uint32_t* values, NSUInteger count)
{
    return numbers(
        values, count, +[](std::uint32_t value) { return NSNumber::numberWithUnsignedLong(value); });
}

NSRef<NSMutableArray> LUMArray_Deprecated::arrayWithFloat32Values(const float* values, NSUInteger count)
{
    return numbers(values, count, &NSNumber::numberWithFloat);
}

NSId LUMArray_Deprecated::closestNumberToNumber(const NSRef<NSArray>& array, const NSRef<NSNumber>& number)
{
    return ClosestNumber::call(array, number);
}

void LUMArray_Deprecated::removeObjects(const NSRef<NSMutableArray>& array, const NSRef<NSArray>& objects)
{
    RemoveObjects::call(array, objects);
}
