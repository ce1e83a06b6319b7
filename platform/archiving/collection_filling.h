#pragma once

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSCoder.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSet.h"
#include "LUMPlatform/NSString.h"

namespace platform {

/// What an element refuses, to be a key for instance, is the archive's fault.
template<typename Fill> void fillingCollection(const Fill& fill)
{
    try {
        fill();
    } catch (const NSException& exception) {
        throw NSException(NSInvalidUnarchiveOperationException,
            std::string("a collection of the archive cannot be made: ") + exception.what());
    }
}

/// Fills, or empties, collections that nobody but an unarchiver has seen. They have to exist before their
/// elements do, which may lead back to them; once filled they never change again, as any other of their
/// class.
class ArrayFilling : public NSArray {
public:
    static void fill(NSArray& array, std::vector<NSId> objects)
    {
        array.*(&ArrayFilling::mObjects) = std::move(objects);
    }
    static void empty(NSArray& array) { fill(array, {}); }
};

class DictionaryFilling : public NSDictionary {
public:
    static void fill(NSDictionary& dictionary, std::span<const NSId> keys, std::span<const NSId> objects)
    {
        fillingCollection([&] {
            for (std::size_t at = 0; at < keys.size(); ++at)
                (dictionary.*(&DictionaryFilling::set))(objects[at], keys[at], "an archive:");
        });
    }
    static void empty(NSDictionary& dictionary)
    {
        (dictionary.*(&DictionaryFilling::mTable))
            .swap((*NSMake<NSDictionary>()).*(&DictionaryFilling::mTable));
    }
};

class SetFilling : public NSSet {
public:
    static void fill(NSSet& set, std::span<const NSId> objects)
    {
        fillingCollection([&] {
            for (const NSId& object : objects)
                (set.*(&SetFilling::add))(object);
        });
    }
    static void empty(NSSet& set)
    {
        (set.*(&SetFilling::mTable)).swap((*NSMake<NSSet>()).*(&SetFilling::mTable));
    }
};

/// Cuts what a collection leads to off: collections that lead back to themselves keep themselves alive. They
/// stay as they are when not even the memory of an empty one is left.
inline void emptyCollection(NSObject& object) noexcept
{
    try {
        if (auto* array = NSDowncast<NSArray>(&object))
            ArrayFilling::empty(*array);
        else if (auto* dictionary = NSDowncast<NSDictionary>(&object))
            DictionaryFilling::empty(*dictionary);
        else if (auto* set = NSDowncast<NSSet>(&object))
            SetFilling::empty(*set);
    } catch (const std::bad_alloc&) {
        return;
    }
}

}
