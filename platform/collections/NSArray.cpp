#include "LUMPlatform/NSArray.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "platform/collections/collection_enumerator.h"
#include "platform/collections/comparison_depth.h"
#include "platform/collections/container_description.h"

#include <algorithm>

namespace {

bool writeToFile(const NSArray& array, const NSRef<NSString>& path, bool atomically)
{
    return array.writeToFile(path, atomically);
}

constexpr NSMethod kMethods[] = {
    NSMethodOf<"count", &NSArray::count>(),
    NSMethodOf<"objectAtIndex:", &NSArray::objectAtIndex<NSObject>>(),
    NSMethodOf<"lastObject", &NSArray::lastObject>(),
    NSMethodOf<"indexOfObject:", &NSArray::indexOfObject>(),
    NSMethodOf<"indexOfObjectIdenticalTo:", &NSArray::indexOfObjectIdenticalTo>(),
    NSMethodOf<"containsObject:", &NSArray::containsObject>(),
    NSMethodOf<"subarrayWithRange:", &NSArray::subarrayWithRange>(),
    NSMethodOf<"arrayByAddingObject:", &NSArray::arrayByAddingObject>(),
    NSMethodOf<"arrayByAddingObjectsFromArray:", &NSArray::arrayByAddingObjectsFromArray>(),
    NSMethodOf<"sortedArrayUsingSelector:", &NSArray::sortedArrayUsingSelector>(),
    NSMethodOf<"sortedArrayUsingDescriptors:", &NSArray::sortedArrayUsingDescriptors>(),
    NSMethodOf<"makeObjectsPerformSelector:", &NSArray::makeObjectsPerformSelector>(),
    NSMethodOf<"makeObjectsPerformSelector:withObject:", &NSArray::makeObjectsPerformSelectorWithObject>(),
    NSMethodOf<"componentsJoinedByString:", &NSArray::componentsJoinedByString>(),
    NSMethodOf<"objectEnumerator", &NSArray::objectEnumerator>(),
    NSMethodOf<"isEqualToArray:", &NSArray::isEqualToArray>(),
    NSMethodOf<"writeToFile:atomically:", &writeToFile>(),
};

}

const NSClass& NSArray::classObject()
{
    static const NSClass& type = NSClass::define("NSArray", &NSObject::classObject(), kMethods);
    return type;
}

NSArray::NSArray(std::vector<NSId> objects) : mObjects(std::move(objects)) { }

NSArray::~NSArray() = default;

NSRef<NSArray> NSArray::array()
{
    return NSMake<NSArray>();
}

NSRef<NSArray> NSArray::arrayWithObject(const NSId& object)
{
    return of(object);
}

NSRef<NSArray> NSArray::arrayWithArray(const NSRef<NSArray>& array)
{
    return array ? NSMake<NSArray>(array->mObjects) : NSArray::array();
}

NSRef<NSArray> NSArray::arrayWithObjects(std::vector<NSId> objects)
{
    for (const NSId& object : objects)
        required(object, "arrayWithObjects:");
    return NSMake<NSArray>(std::move(objects));
}

const NSId& NSArray::required(const NSId& object, const char* operation)
{
    if (!object)
        throw NSException(
            NSInvalidArgumentException, std::string(operation) + " an array cannot hold null; store NSNull");
    return object;
}

void NSArray::raiseRange(const char* operation, NSUInteger index) const
{
    throw NSException(NSRangeException,
        std::string(operation) + " index " + std::to_string(index) + " is past the end of "
            + std::to_string(count()) + " elements");
}

void NSArray::checkRange(const char* operation, NSRange range) const
{
    if (range.location > count() || range.length > count() - range.location)
        throw NSException(NSRangeException,
            std::string(operation) + " range {" + std::to_string(range.location) + ", "
                + std::to_string(range.length) + "} reaches past the end of " + std::to_string(count())
                + " elements");
}

NSId NSArray::lastObject() const
{
    return mObjects.empty() ? nullptr : mObjects.back();
}

NSUInteger NSArray::indexOfObject(const NSId& object) const
{
    for (NSUInteger at = 0; object && at < count(); ++at) {
        NSId kept = mObjects[at]; // isEqual may run foreign code
        if (kept == object || object->isEqual(kept))
            return at;
    }
    return NSNotFound;
}

NSUInteger NSArray::indexOfObjectIdenticalTo(const NSId& object) const
{
    auto found = std::find(mObjects.begin(), mObjects.end(), object);
    return found == mObjects.end() ? NSNotFound : static_cast<NSUInteger>(found - mObjects.begin());
}

bool NSArray::containsObject(const NSId& object) const
{
    return indexOfObject(object) != NSNotFound;
}

NSRef<NSArray> NSArray::subarrayWithRange(NSRange range) const
{
    checkRange("subarrayWithRange:", range);
    auto first = mObjects.begin() + static_cast<std::ptrdiff_t>(range.location);
    return NSMake<NSArray>(std::vector<NSId>(first, first + static_cast<std::ptrdiff_t>(range.length)));
}

NSRef<NSArray> NSArray::arrayByAddingObject(const NSId& object) const
{
    std::vector<NSId> objects;
    objects.reserve(count() + 1);
    objects = mObjects;
    objects.push_back(required(object, "arrayByAddingObject:"));
    return NSMake<NSArray>(std::move(objects));
}

NSRef<NSArray> NSArray::arrayByAddingObjectsFromArray(const NSRef<NSArray>& other) const
{
    std::vector<NSId> objects = mObjects;
    if (other)
        objects.insert(objects.end(), other->mObjects.begin(), other->mObjects.end());
    return NSMake<NSArray>(std::move(objects));
}

void NSArray::makeObjectsPerformSelector(NSSelector selector) const
{
    for (const NSId& object : *this)
        NSSend(object, selector);
}

void NSArray::makeObjectsPerformSelectorWithObject(NSSelector selector, const NSId& argument) const
{
    for (const NSId& object : *this)
        NSSend(object, selector, argument);
}

NSRef<NSString> NSArray::componentsJoinedByString(const NSRef<NSString>& separator) const
{
    std::u16string joined;
    bool first = true;
    for (const NSId& object : *this) {
        if (!first && separator)
            joined += separator->characters();
        joined += object->description()->characters();
        first = false;
    }
    return joined;
}

NSRef<NSEnumerator> NSArray::objectEnumerator() const
{
    return platform::enumeratorOf(*this, [](const NSId& object) { return object; });
}

bool NSArray::isEqualToArray(const NSRef<NSArray>& other) const
{
    if (other.get() == this)
        return true;
    if (!other || other->count() != count())
        return false;
    const platform::ComparisonDepth depth;
    for (NSUInteger at = 0; at < count() && at < other->count(); ++at) {
        NSId mine = mObjects[at];
        NSId others = other->mObjects[at];
        if (!NSEqual(mine, others))
            return false;
    }
    return true;
}

bool NSArray::isEqual(const NSId& other) const
{
    return isEqualToArray(NSCast<NSArray>(other));
}

NSUInteger NSArray::hash() const
{
    // The elements' hashes may change while the array is a key, and may lead back here; the count is enough.
    return count();
}

NSRef<NSString> NSArray::description() const
{
    return platform::containerDescription(*this);
}

NSId NSArray::copy() const
{
    return NSShare(const_cast<NSArray*>(this));
}

NSId NSArray::mutableCopy() const
{
    return NSMake<NSMutableArray>(mObjects);
}
