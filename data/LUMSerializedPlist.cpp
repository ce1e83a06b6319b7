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

#include <algorithm>
#include <optional>
#include <unordered_map>

namespace {

// A graph of a few hundred bytes can share its containers so often that its values fill any memory.
constexpr NSUInteger kMostRepeatedBytes = NSUInteger { 1 } << 27;

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
                mMet[container.object.get()].end = mBytes->length();
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
    /// What a container has become in the bytes.
    struct Range {
        NSUInteger begin = 0;
        std::optional<NSUInteger> end {}; // while it is not open
    };
    struct Container {
        NSId object;
        NSRef<NSDictionary> dictionary; // null for an array
        NSRef<NSArray> list;
        NSArray::Iterator next;
    };

    void enter(const NSId& object)
    {
        const auto [met, isNew] = mMet.emplace(object.get(), Range { mBytes->length() });
        if (!isNew)
            return repeat(met->second, *object);
        auto dictionary = NSCast<NSDictionary>(object);
        auto list = dictionary ? sortedKeys(*dictionary) : NSCast<NSArray>(object);
        const auto first = list->begin();
        mOpen.push_back({ object, std::move(dictionary), std::move(list), first });
    }

    void repeat(const Range& range, const NSObject& object)
    {
        if (!range.end)
            lum::raiseNotSerializable(object); // it holds itself
        const NSUInteger length = *range.end - range.begin;
        mRepeated += length;
        if (mRepeated > kMostRepeatedBytes)
            lum::raiseNotSerializable(object);
        const NSUInteger before = mBytes->length();
        mBytes->setLength(before + length);
        const auto bytes = mBytes->mutableBytes();
        std::ranges::copy(
            bytes.subspan(range.begin, length), bytes.begin() + static_cast<std::ptrdiff_t>(before));
    }

    static NSRef<NSArray> sortedKeys(const NSDictionary& dictionary)
    {
        static const NSSelector compare("compare:");
        std::vector<NSId> keys;
        keys.reserve(dictionary.count());
        for (const NSDictionary::Entry& entry : dictionary) {
            lum::requireStringAsKey(entry.key, dictionary);
            keys.push_back(entry.key);
        }
        // Two keys may compare as the same text in two forms: then their code units decide.
        std::ranges::sort(keys, {}, [](const NSId& key) { return NSCast<NSString>(key)->characters(); });
        return NSArray::arrayWithObjects(std::move(keys))->sortedArrayUsingSelector(compare);
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
    std::unordered_map<const NSObject*, Range> mMet;
    NSUInteger mRepeated = 0;
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
