#include "LUMPlatform/NSDictionary.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "platform/collections/collection_enumerator.h"
#include "platform/collections/comparison_depth.h"
#include "platform/collections/container_description.h"
#include "platform/collections/hash_table.h"

namespace {

bool writeToFile(const NSDictionary& dictionary, const NSRef<NSString>& path, bool atomically)
{
    return dictionary.writeToFile(path, atomically);
}

constexpr NSMethod kMethods[] = {
    NSMethodOf<"count", &NSDictionary::count>(),
    NSMethodOf<"objectForKey:", &NSDictionary::objectForKey<NSObject>>(),
    NSMethodOf<"allKeys", &NSDictionary::allKeys>(),
    NSMethodOf<"allValues", &NSDictionary::allValues>(),
    NSMethodOf<"keyEnumerator", &NSDictionary::keyEnumerator>(),
    NSMethodOf<"objectEnumerator", &NSDictionary::objectEnumerator>(),
    NSMethodOf<"isEqualToDictionary:", &NSDictionary::isEqualToDictionary>(),
    NSMethodOf<"writeToFile:atomically:", &writeToFile>(),
};

void requireSameCount(NSUInteger objects, NSUInteger keys, const char* operation)
{
    if (objects != keys)
        throw NSException(NSInvalidArgumentException,
            std::string(operation) + " count of objects (" + std::to_string(objects)
                + ") differs from count of keys (" + std::to_string(keys) + ")");
}

}

const NSClass& NSDictionary::classObject()
{
    static const NSClass& type = NSClass::define("NSDictionary", &NSObject::classObject(), kMethods);
    return type;
}

NSDictionary::NSDictionary() : mTable(std::make_unique<platform::DictionaryTable>()) { }

NSDictionary::NSDictionary(const NSDictionary* other)
    : mTable(other ? std::make_unique<platform::DictionaryTable>(*other->mTable)
                   : std::make_unique<platform::DictionaryTable>())
{
}

NSDictionary::~NSDictionary() = default;

NSRef<NSDictionary> NSDictionary::of(std::initializer_list<Entry> entries)
{
    auto dictionary = NSMake<NSDictionary>();
    dictionary->mTable->reserve(entries.size());
    for (const Entry& entry : entries)
        dictionary->set(entry.value, entry.key, "NSDictionary::of");
    return dictionary;
}

NSRef<NSDictionary> NSDictionary::dictionary()
{
    return NSMake<NSDictionary>();
}

NSRef<NSDictionary> NSDictionary::dictionaryWithObject(const NSId& object, const NSId& key)
{
    auto dictionary = NSMake<NSDictionary>();
    dictionary->set(object, key, "dictionaryWithObject:forKey:");
    return dictionary;
}

NSRef<NSDictionary> NSDictionary::dictionaryWithObjects(
    const NSRef<NSArray>& objects, const NSRef<NSArray>& keys)
{
    const NSUInteger objectCount = objects ? objects->count() : 0;
    const NSUInteger keyCount = keys ? keys->count() : 0;
    requireSameCount(objectCount, keyCount, "dictionaryWithObjects:forKeys:");
    auto dictionary = NSMake<NSDictionary>();
    dictionary->mTable->reserve(keyCount);
    for (NSUInteger at = 0; at < keyCount; ++at)
        dictionary->set(
            objects->objectAtIndex(at), keys->objectAtIndex(at), "dictionaryWithObjects:forKeys:");
    return dictionary;
}

NSRef<NSDictionary> NSDictionary::dictionaryWithObjectsCount(
    std::span<const NSId> objects, std::span<const NSId> keys)
{
    requireSameCount(objects.size(), keys.size(), "dictionaryWithObjects:forKeys:count:");
    auto dictionary = NSMake<NSDictionary>();
    dictionary->mTable->reserve(keys.size());
    for (NSUInteger at = 0; at < keys.size(); ++at)
        dictionary->set(objects[at], keys[at], "dictionaryWithObjects:forKeys:count:");
    return dictionary;
}

NSRef<NSDictionary> NSDictionary::dictionaryWithObjectsAndKeys(std::initializer_list<NSId> objectsAndKeys)
{
    auto dictionary = NSMake<NSDictionary>();
    for (auto at = objectsAndKeys.begin(); at != objectsAndKeys.end() && *at; ++at) {
        const NSId& object = *at++;
        if (at == objectsAndKeys.end())
            throw NSException(
                NSInvalidArgumentException, "dictionaryWithObjectsAndKeys: the last object has no key");
        dictionary->set(object, *at, "dictionaryWithObjectsAndKeys:");
    }
    return dictionary;
}

NSRef<NSDictionary> NSDictionary::dictionaryWithDictionary(const NSRef<NSDictionary>& other)
{
    return NSMake<NSDictionary>(other.get());
}

void NSDictionary::set(const NSId& object, const NSId& key, const char* operation)
{
    if (!object || !key)
        throw NSException(NSInvalidArgumentException,
            std::string(operation) + (key ? " the object for key " + key->description()->utf8() : " the key")
                + " is null; store NSNull");
    NSId value = object; // and the value it replaces ends with this name
    std::swap(mTable->insert(key, [&] { return key->copy(); }), value);
}

NSUInteger NSDictionary::count() const
{
    return mTable->count();
}

NSId NSDictionary::valueOf(const NSId& key) const
{
    const NSUInteger found = key ? mTable->find(key) : platform::DictionaryTable::kNone;
    return found == platform::DictionaryTable::kNone ? nullptr : mTable->entry(found).value;
}

NSDictionary::Entry NSDictionary::elementAtPosition(NSUInteger position) const
{
    const auto& entry = mTable->entry(position);
    return { entry.key, entry.value };
}

NSUInteger NSDictionary::nextPosition(NSUInteger position) const
{
    return mTable->nextPosition(position);
}

NSUInteger NSDictionary::endPosition() const
{
    return mTable->endPosition();
}

NSUInteger NSDictionary::mutations() const
{
    return mTable->mutations();
}

NSRef<NSArray> NSDictionary::allKeys() const
{
    std::vector<NSId> keys;
    keys.reserve(count());
    for (const auto& [key, value] : *this)
        keys.push_back(key);
    return NSArray::arrayWithObjects(std::move(keys));
}

NSRef<NSArray> NSDictionary::allValues() const
{
    std::vector<NSId> values;
    values.reserve(count());
    for (const auto& [key, value] : *this)
        values.push_back(value);
    return NSArray::arrayWithObjects(std::move(values));
}

NSRef<NSEnumerator> NSDictionary::keyEnumerator() const
{
    return platform::enumeratorOf(*this, [](const Entry& entry) { return entry.key; });
}

NSRef<NSEnumerator> NSDictionary::objectEnumerator() const
{
    return platform::enumeratorOf(*this, [](const Entry& entry) { return entry.value; });
}

bool NSDictionary::isEqualToDictionary(const NSRef<NSDictionary>& other) const
{
    if (other.get() == this)
        return true;
    if (!other || other->count() != count())
        return false;
    const platform::ComparisonDepth depth;
    for (const auto& [key, value] : *this) {
        NSId others = other->valueOf(key);
        if (!others || !NSEqual(value, others))
            return false;
    }
    return true;
}

bool NSDictionary::isEqual(const NSId& other) const
{
    return isEqualToDictionary(NSCast<NSDictionary>(other));
}

NSUInteger NSDictionary::hash() const
{
    // The values' hashes may change while the dictionary is a key, and may lead back here; the count is
    // enough.
    return count();
}

NSRef<NSString> NSDictionary::description() const
{
    return platform::containerDescription(*this);
}

NSId NSDictionary::copy() const
{
    return NSShare(const_cast<NSDictionary*>(this));
}

NSId NSDictionary::mutableCopy() const
{
    return NSMake<NSMutableDictionary>(this);
}
