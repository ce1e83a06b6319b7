#include "LUMFoundation/LUMPlistable.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "core/extension_operation.h"
#include "core/method_tables.h"
#include "data/plist_fault.h"

#include <optional>
#include <unordered_map>

namespace {

bool isLeaf(const NSId& object)
{
    NSObject* leaf = object.get();
    return NSDowncast<NSData>(leaf) || NSDowncast<NSDate>(leaf) || NSDowncast<NSNumber>(leaf)
        || NSDowncast<NSString>(leaf);
}

/// The containers being asked, the innermost last. Each answers true until something in it is false.
class Walk {
public:
    bool asks(const NSId& top)
    {
        enter(top);
        for (;;) {
            Container& container = mOpen.back();
            if (NSId next = nextOf(container)) {
                meet(next);
                continue;
            }
            const bool result = container.result;
            mMet[container.object.get()] = kDone;
            mOpen.pop_back();
            if (mOpen.empty())
                return result;
            mOpen.back().result = result;
        }
    }

private:
    struct Container {
        NSId object;
        NSRef<NSArray> array; // or the other
        NSRef<NSDictionary> dictionary;
        NSArray::Iterator element;
        NSDictionary::Iterator entry;
        bool result = true;
    };

    enum Progress : bool { kOpen, kDone };

    void enter(const NSId& object)
    {
        const auto [met, isNew] = mMet.emplace(object.get(), kOpen);
        if (!isNew && met->second == kOpen)
            lum::raiseNotPlistable(object);
        if (!isNew)
            return; // it has answered true, or nothing more would be asked
        Container container { object, NSCast<NSArray>(object), NSCast<NSDictionary>(object), {}, {} };
        if (container.array)
            container.element = container.array->begin();
        else
            container.entry = container.dictionary->begin();
        mOpen.push_back(std::move(container));
    }

    /// What has to be asked next; null when the container is done.
    static NSId nextOf(Container& container)
    {
        if (container.array)
            return container.result && container.element != container.array->end() ? *container.element++
                                                                                   : nullptr;
        while (container.entry != container.dictionary->end()) {
            const NSDictionary::Entry entry = *container.entry++;
            lum::requireStringAsKey(entry.key, *container.dictionary);
            if (container.result)
                return entry.value;
        }
        return nullptr;
    }

    void meet(const NSId& object)
    {
        static const NSSelector selector("isPlistable");
        if (object->isa().overridingMethod(selector))
            mOpen.back().result = NSSend<bool>(object, selector);
        else if (NSDowncast<NSArray>(object.get()) || NSDowncast<NSDictionary>(object.get()))
            enter(object);
        else if (!isLeaf(object))
            lum::raiseNotPlistable(object);
    }

    std::vector<Container> mOpen;
    // Graphs that share containers have as many ways through them as they like, so each is asked once.
    std::unordered_map<const NSObject*, Progress> mMet;
};

bool isPlistableObject(const NSId& object)
{
    // Deliberate: "no" is an exception.
    if (!isLeaf(object))
        lum::raiseNotPlistable(object);
    return true;
}

bool isPlistableDictionary(const NSRef<NSDictionary>& dictionary)
{
    return Walk().asks(dictionary);
}

bool isPlistableArray(const NSRef<NSArray>& array)
{
    return Walk().asks(array);
}

using ObjectIsPlistable = lum::ExtensionOperation<"isPlistable", &isPlistableObject>;
using DictionaryIsPlistable = lum::ExtensionOperation<"isPlistable", &isPlistableDictionary>;
using ArrayIsPlistable = lum::ExtensionOperation<"isPlistable", &isPlistableArray>;

constexpr NSMethod kObjectMethods[] = { ObjectIsPlistable::method() };
constexpr NSMethod kDictionaryMethods[] = { DictionaryIsPlistable::method() };
constexpr NSMethod kArrayMethods[] = { ArrayIsPlistable::method() };

}

std::span<const NSMethod> lum::objectPlistableMethods()
{
    return kObjectMethods;
}

std::span<const NSMethod> lum::dictionaryPlistableMethods()
{
    return kDictionaryMethods;
}

std::span<const NSMethod> lum::arrayPlistableMethods()
{
    return kArrayMethods;
}

bool LUMPlistable::isPlistable(const NSId& object)
{
    if (auto dictionary = NSCast<NSDictionary>(object))
        return DictionaryIsPlistable::call(dictionary);
    if (auto array = NSCast<NSArray>(object))
        return ArrayIsPlistable::call(array);
    return ObjectIsPlistable::call(object);
}
