#include "LUMPlatform/NSSet.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSEnumerator.h"
#include "platform/collections/collection_enumerator.h"
#include "platform/collections/comparison_depth.h"
#include "platform/collections/container_description.h"
#include "platform/collections/hash_table.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"count", &NSSet::count>(),
    NSMethodOf<"containsObject:", &NSSet::containsObject>(),
    NSMethodOf<"allObjects", &NSSet::allObjects>(),
    NSMethodOf<"objectEnumerator", &NSSet::objectEnumerator>(),
    NSMethodOf<"isEqualToSet:", &NSSet::isEqualToSet>(),
};
constexpr NSMethod kMutableMethods[] = {
    NSMethodOf<"addObject:", &NSMutableSet::addObject>(),
    NSMethodOf<"removeObject:", &NSMutableSet::removeObject>(),
    NSMethodOf<"removeAllObjects", &NSMutableSet::removeAllObjects>(),
};

}

const NSClass& NSSet::classObject()
{
    static const NSClass& type = NSClass::define("NSSet", &NSObject::classObject(), kMethods);
    return type;
}

const NSClass& NSMutableSet::classObject()
{
    static const NSClass& type = NSClass::define("NSMutableSet", &NSSet::classObject(), kMutableMethods);
    return type;
}

NSSet::NSSet() : mTable(std::make_unique<platform::SetTable>()) { }
NSSet::NSSet(const NSSet* other) : mTable(std::make_unique<platform::SetTable>(*other->mTable)) { }
NSSet::~NSSet() = default;

NSMutableSet::NSMutableSet(const NSSet* other) : NSSet(other) { }
NSMutableSet::~NSMutableSet() = default;

NSRef<NSSet> NSSet::set()
{
    return NSMake<NSSet>();
}

NSRef<NSSet> NSSet::setWithArray(const NSRef<NSArray>& array)
{
    auto set = NSMake<NSSet>();
    if (array)
        for (const NSId& object : array)
            set->add(object);
    return set;
}

NSRef<NSSet> NSSet::setWithObjects(std::initializer_list<NSId> objects)
{
    auto set = NSMake<NSSet>();
    for (const NSId& object : objects)
        set->add(object);
    return set;
}

void NSSet::add(const NSId& object)
{
    if (!object)
        throw NSException(NSInvalidArgumentException, "a set cannot hold null; store NSNull");
    mTable->insert(object, [&] { return object; });
}

NSUInteger NSSet::count() const
{
    return mTable->count();
}

bool NSSet::containsObject(const NSId& object) const
{
    return object && mTable->find(object) != platform::SetTable::kNone;
}

NSRef<NSArray> NSSet::allObjects() const
{
    return NSArray::arrayWithObjects(std::vector<NSId>(begin(), end()));
}

NSRef<NSEnumerator> NSSet::objectEnumerator() const
{
    return platform::enumeratorOf(*this, [](const NSId& object) { return object; });
}

const NSId& NSSet::elementAtPosition(NSUInteger position) const
{
    return mTable->entry(position).key;
}

NSUInteger NSSet::nextPosition(NSUInteger position) const
{
    return mTable->nextPosition(position);
}

NSUInteger NSSet::endPosition() const
{
    return mTable->endPosition();
}

NSUInteger NSSet::mutations() const
{
    return mTable->mutations();
}

bool NSSet::isEqualToSet(const NSRef<NSSet>& other) const
{
    if (other.get() == this)
        return true;
    if (!other || other->count() != count())
        return false;
    const platform::ComparisonDepth depth;
    for (const NSId& object : *this)
        if (!other->containsObject(object))
            return false;
    return true;
}

bool NSSet::isEqual(const NSId& other) const
{
    return isEqualToSet(NSCast<NSSet>(other));
}

NSUInteger NSSet::hash() const
{
    return count(); // as for arrays and dictionaries
}

NSRef<NSString> NSSet::description() const
{
    return platform::containerDescription(*this);
}

NSId NSSet::copy() const
{
    return NSShare(const_cast<NSSet*>(this));
}

NSId NSSet::mutableCopy() const
{
    return NSMake<NSMutableSet>(this);
}

NSRef<NSMutableSet> NSMutableSet::set()
{
    return NSMake<NSMutableSet>();
}

void NSMutableSet::addObject(const NSId& object)
{
    add(object);
}

void NSMutableSet::removeObject(const NSId& object)
{
    NSId kept = object; // it may be held by the set alone
    if (kept)
        mTable->remove(kept);
}

void NSMutableSet::removeAllObjects()
{
    mTable->removeAll();
}

NSId NSMutableSet::copy() const
{
    return NSMake<NSSet>(static_cast<const NSSet*>(this));
}
