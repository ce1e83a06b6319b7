#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSDictionary.h"
#include "platform/collections/hash_table.h"

#include <algorithm>

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"setObject:forKey:", &NSMutableDictionary::setObject>(),
    NSMethodOf<"removeObjectForKey:", &NSMutableDictionary::removeObjectForKey>(),
    NSMethodOf<"removeObjectsForKeys:", &NSMutableDictionary::removeObjectsForKeys>(),
    NSMethodOf<"removeAllObjects", &NSMutableDictionary::removeAllObjects>(),
    NSMethodOf<"addEntriesFromDictionary:", &NSMutableDictionary::addEntriesFromDictionary>(),
    NSMethodOf<"setDictionary:", &NSMutableDictionary::setDictionary>(),
};

}

const NSClass& NSMutableDictionary::classObject()
{
    static const NSClass& type =
        NSClass::define("NSMutableDictionary", &NSDictionary::classObject(), kMethods);
    return type;
}

NSMutableDictionary::NSMutableDictionary(const NSDictionary* other) : NSDictionary(other) { }

NSMutableDictionary::~NSMutableDictionary() = default;

NSRef<NSMutableDictionary> NSMutableDictionary::of(std::initializer_list<Entry> entries)
{
    auto dictionary = dictionaryWithCapacity(entries.size());
    for (const Entry& entry : entries)
        dictionary->set(entry.value, entry.key, "NSMutableDictionary::of");
    return dictionary;
}

NSRef<NSMutableDictionary> NSMutableDictionary::dictionary()
{
    return NSMake<NSMutableDictionary>();
}

NSRef<NSMutableDictionary> NSMutableDictionary::dictionaryWithCapacity(NSUInteger capacity)
{
    // A hint: an absurd one reserves nothing.
    constexpr NSUInteger kMaxReserved = 1'000'000;
    auto dictionary = NSMake<NSMutableDictionary>();
    dictionary->mTable->reserve(std::min(capacity, kMaxReserved));
    return dictionary;
}

NSRef<NSMutableDictionary> NSMutableDictionary::dictionaryWithDictionary(const NSRef<NSDictionary>& other)
{
    return NSMake<NSMutableDictionary>(other.get());
}

void NSMutableDictionary::setObject(const NSId& object, const NSId& key)
{
    set(object, key, "setObject:forKey:");
}

void NSMutableDictionary::removeObjectForKey(const NSId& key)
{
    if (!key)
        throw NSException(NSInvalidArgumentException, "removeObjectForKey: the key is null");
    NSId kept = key; // it may be the very key that goes
    mTable->remove(kept);
}

void NSMutableDictionary::removeObjectsForKeys(const NSRef<NSArray>& keys)
{
    if (!keys)
        return;
    for (const NSId& key : keys)
        removeObjectForKey(key);
}

void NSMutableDictionary::removeAllObjects()
{
    mTable->removeAll();
}

void NSMutableDictionary::addEntriesFromDictionary(const NSRef<NSDictionary>& other)
{
    if (!other || other.get() == this)
        return;
    for (const auto& [key, value] : other)
        set(value, key, "addEntriesFromDictionary:");
}

void NSMutableDictionary::setDictionary(const NSRef<NSDictionary>& other)
{
    if (other.get() == this)
        return;
    NSRef<NSDictionary> kept = other;
    removeAllObjects();
    addEntriesFromDictionary(kept);
}

NSId NSMutableDictionary::copy() const
{
    return NSMake<NSDictionary>(static_cast<const NSDictionary*>(this));
}
