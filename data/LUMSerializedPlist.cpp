#include "LUMFoundation/LUMSerializedPlist.h"

#include "LUMFoundation/LUMPlistable.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSKeyValueCoding.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSString.h"
#include "core/extension_operation.h"
#include "core/method_tables.h"
#include "data/plist_fault.h"

#include <unordered_set>

namespace {

NSRef<NSData> bytesOfLeaf(const NSId& leaf)
{
    if (!LUMPlistable::isPlistable(leaf))
        return nullptr;
    auto data = NSPropertyListSerialization::dataWithPropertyList(leaf, NSPropertyListBinaryFormat_v1_0);
    if (!data)
        lum::raiseNotSerializable(*leaf);
    return data;
}

/// The containers being written, the innermost last. Of a dictionary it is the sorted list of keys that is
/// gone through.
class Walk {
public:
    NSRef<NSData> bytesOf(const NSId& top)
    {
        mBytes = NSMutableData::data();
        enter(top);
        while (!mOpen.empty()) {
            Container& container = mOpen.back();
            if (container.next == container.list->end()) {
                mHeld.erase(container.object.get());
                mOpen.pop_back();
                continue;
            }
            NSId object = *container.next++;
            // Deliberate: the key itself is not written, and one that begins with @ names a property.
            if (container.dictionary)
                object = NSKeyValueCoding::valueForKey(container.dictionary, NSCast<NSString>(object));
            if (object)
                meet(object);
        }
        return mBytes;
    }

private:
    struct Container {
        NSId object;
        NSRef<NSDictionary> dictionary; // null for an array
        NSRef<NSArray> list;
        NSArray::Iterator next;
    };

    void enter(const NSId& object)
    {
        if (!mHeld.insert(object.get()).second)
            lum::raiseNotSerializable(*object);
        auto dictionary = NSCast<NSDictionary>(object);
        auto list = dictionary ? sortedKeys(*dictionary) : NSCast<NSArray>(object);
        const auto first = list->begin();
        mOpen.push_back({ object, std::move(dictionary), std::move(list), first });
    }

    static NSRef<NSArray> sortedKeys(const NSDictionary& dictionary)
    {
        static const NSSelector compare("compare:");
        for (const NSDictionary::Entry& entry : dictionary)
            lum::requireStringAsKey(entry.key, dictionary);
        return dictionary.allKeys()->sortedArrayUsingSelector(compare);
    }

    void meet(const NSId& object)
    {
        static const NSSelector selector("serializedPlist");
        if (object->isa().overridingMethod(selector))
            mBytes->appendData(NSSend<NSRef<NSData>>(object, selector));
        else if (NSDowncast<NSArray>(object.get()) || NSDowncast<NSDictionary>(object.get()))
            enter(object);
        else
            mBytes->appendData(bytesOfLeaf(object));
    }

    std::vector<Container> mOpen;
    std::unordered_set<const NSObject*> mHeld; // the open ones
    NSRef<NSMutableData> mBytes;
};

NSRef<NSData> serialized(const NSId& object)
{
    if (NSDowncast<NSArray>(object.get()) || NSDowncast<NSDictionary>(object.get()))
        return Walk().bytesOf(object);
    return bytesOfLeaf(object);
}

using SerializedPlist = lum::ExtensionOperation<"serializedPlist", &serialized>;

constexpr NSMethod kMethods[] = { SerializedPlist::method() };

}

std::span<const NSMethod> lum::serializedPlistMethods()
{
    return kMethods;
}

NSRef<NSData> LUMSerializedPlist::serializedPlist(const NSId& object)
{
    return SerializedPlist::call(object);
}
