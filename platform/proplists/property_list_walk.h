#pragma once

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSDecodingLimits.h"
#include "LUMPlatform/NSDictionary.h"
#include "platform/proplists/property_list_fault.h"
#include "platform/proplists/property_list_kind.h"
#include "platform/proplists/sorted_entries.h"

#include <algorithm>

namespace platform {

/// Goes through a property list for a writer, from the top down and without recursion. Dictionaries come in
/// the order of their keys.
///
/// Throws PropertyListFault for what is no property list, for a container that holds itself, and for more
/// depth or more objects than a reader takes by default. The sink's functions:
///
///     void value(const NSObject& value, PropertyListKind kind);
///     void beginArray(std::size_t count);
///     void beginDictionary(std::span<const SortedEntry> entries);
///     void key(const NSString& key); // before each value of a dictionary
///     void endArray();
///     void endDictionary();
template<typename Sink> class PropertyListWalk {
public:
    explicit PropertyListWalk(Sink& sink) : mSink(sink) { }

    void through(const NSId& propertyList)
    {
        if (!propertyList)
            throw PropertyListFault("null is no property list");
        meet(*propertyList);
        while (!mOpen.empty()) {
            Container& container = mOpen.back();
            if (container.next == container.count)
                leave();
            else if (container.array)
                meet(*container.array->elementAtPosition(container.next++));
            else {
                const SortedEntry entry = mEntries[container.firstEntry + container.next++];
                mSink.key(*entry.key);
                meet(*entry.value);
            }
        }
    }

private:
    struct Container {
        const NSObject* object;
        const NSArray* array; // null for a dictionary
        std::size_t count;
        std::size_t firstEntry; // of a dictionary's, in mEntries
        std::size_t next = 0;
    };

    void meet(const NSObject& object)
    {
        if (++mCount > mLimits.objects)
            throw PropertyListFault("there are more than " + std::to_string(mLimits.objects) + " objects");
        switch (const PropertyListKind kind = propertyListKindOf(object)) {
        case PropertyListKind::None:
            throw PropertyListFault(
                "an object of class " + std::string(object.isa().name()) + " is no property list");
        case PropertyListKind::Array: {
            const auto& array = static_cast<const NSArray&>(object);
            enter({ &object, &array, array.count(), 0 });
            return mSink.beginArray(array.count());
        }
        case PropertyListKind::Dictionary: {
            const auto& dictionary = static_cast<const NSDictionary&>(object);
            enter({ &object, nullptr, dictionary.count(), mEntries.size() });
            appendSortedEntries(dictionary, mEntries);
            mCount += dictionary.count();
            return mSink.beginDictionary(std::span(mEntries).subspan(mOpen.back().firstEntry));
        }
        default:
            return mSink.value(object, kind);
        }
    }

    void enter(const Container& container)
    {
        if (std::ranges::any_of(
                mOpen, [&](const Container& open) { return open.object == container.object; }))
            throw PropertyListFault("a container holds itself");
        if (mOpen.size() >= mLimits.depth)
            throw PropertyListFault(
                "containers are nested more than " + std::to_string(mLimits.depth) + " deep");
        mOpen.push_back(container);
    }

    void leave()
    {
        const Container container = mOpen.back();
        mOpen.pop_back();
        if (container.array)
            return mSink.endArray();
        mEntries.resize(container.firstEntry);
        mSink.endDictionary();
    }

    Sink& mSink;
    const NSDecodingLimits mLimits;
    std::vector<Container> mOpen;
    std::vector<SortedEntry> mEntries; // of all open dictionaries
    std::size_t mCount = 0;
};

}
