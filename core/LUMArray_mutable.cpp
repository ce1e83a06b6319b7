#include "LUMFoundation/LUMArray.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSIndexSet.h"
#include "core/extension_operation.h"
#include "core/method_tables.h"

namespace {

NSId takeFirst(const NSRef<NSMutableArray>& array)
{
    if (array->count() == 0)
        return nullptr;
    NSId first = array->objectAtIndex(0);
    array->removeObjectAtIndex(0);
    return first;
}

void reverseInPlace(const NSRef<NSMutableArray>& array)
{
    const NSUInteger count = array->count();
    for (NSUInteger index = 0; index < count / 2; ++index)
        array->exchangeObjectAtIndex(index, count - 1 - index);
}

void insertAll(const NSRef<NSMutableArray>& array, const NSRef<NSArray>& objects, std::uint32_t index)
{
    // Deliberate: an index past the end appends.
    array->replaceObjectsInRange({ std::min<NSUInteger>(index, array->count()), 0 }, objects);
}

void moveAll(const NSRef<NSMutableArray>& array, const NSRef<NSIndexSet>& indexes, std::uint32_t index)
{
    auto moved = LUMArray::subsetOfArrayAtIndexes(array, indexes);
    // Deliberate: this takes out whatever equals a moved element, wherever it stands.
    array->removeObjectsInArray(moved);
    LUMArray::insertObjects(array, moved, index);
}

void moveOne(const NSRef<NSMutableArray>& array, std::uint32_t from, std::uint32_t index)
{
    LUMArray::moveObjectsAtIndexes(array, NSIndexSet::indexSetWithIndex(from), index);
}

/// Looks at each element once, with a fresh count, since comparing may change the array.
template<typename Matches>
void replaceMatching(const NSRef<NSMutableArray>& array, const NSId& newObject, const Matches& matches)
{
    for (NSUInteger index = 0; index < array->count(); ++index)
        if (matches(array->objectAtIndex(index)) && index < array->count())
            array->replaceObjectAtIndex(index, newObject);
}

void replaceIdentical(const NSRef<NSMutableArray>& array, const NSId& oldObject, const NSId& newObject)
{
    if (oldObject == newObject)
        return;
    replaceMatching(array, newObject, [&](const NSId& element) { return element == oldObject; });
}

void replaceEqual(const NSRef<NSMutableArray>& array, const NSId& oldObject, const NSId& newObject)
{
    if (!oldObject || NSEqual(oldObject, newObject))
        return;
    replaceMatching(array, newObject, [&](const NSId& element) { return NSEqual(oldObject, element); });
}

using DequeueFromFront = lum::ExtensionOperation<"dequeueObjectFromFront", &takeFirst>;
using Reverse = lum::ExtensionOperation<"reverse", &reverseInPlace>;
using InsertObjects = lum::ExtensionOperation<"insertObjects:atIndex:", &insertAll>;
using MoveObjects = lum::ExtensionOperation<"moveObjectsAtIndexes:toIndex:", &moveAll>;
using MoveObject = lum::ExtensionOperation<"moveObjectAtIndex:toIndex:", &moveOne>;
using ReplaceIdentical = lum::ExtensionOperation<"replaceObjectIdenticalTo:withObject:", &replaceIdentical>;
using Replace = lum::ExtensionOperation<"replaceObject:withObject:", &replaceEqual>;

constexpr NSMethod kMethods[] = {
    DequeueFromFront::method(),
    Reverse::method(),
    InsertObjects::method(),
    MoveObjects::method(),
    MoveObject::method(),
    ReplaceIdentical::method(),
    Replace::method(),
};

}

std::span<const NSMethod> lum::mutableArrayMethods()
{
    return kMethods;
}

NSId LUMArray::dequeueObjectFromFront(const NSRef<NSMutableArray>& array)
{
    return DequeueFromFront::call(array);
}

void LUMArray::reverse(const NSRef<NSMutableArray>& array)
{
    Reverse::call(array);
}

void LUMArray::insertObjects(
    const NSRef<NSMutableArray>& array, const NSRef<NSArray>& objects, std::uint32_t index)
{
    InsertObjects::call(array, objects, index);
}

void LUMArray::moveObjectsAtIndexes(
    const NSRef<NSMutableArray>& array, const NSRef<NSIndexSet>& indexes, std::uint32_t index)
{
    MoveObjects::call(array, indexes, index);
}

void LUMArray::moveObjectAtIndex(const NSRef<NSMutableArray>& array, std::uint32_t from, std::uint32_t index)
{
    MoveObject::call(array, from, index);
}

void LUMArray::replaceObjectIdenticalTo(
    const NSRef<NSMutableArray>& array, const NSId& oldObject, const NSId& newObject)
{
    ReplaceIdentical::call(array, oldObject, newObject);
}

void LUMArray::replaceObject(const NSRef<NSMutableArray>& array, const NSId& oldObject, const NSId& newObject)
{
    Replace::call(array, oldObject, newObject);
}
