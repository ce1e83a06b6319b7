#pragma once

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSSet.h"
#include "platform/archiving/class_codings.h"

namespace platform {

inline bool isDictionary(CodedKind kind)
{
    return kind == CodedKind::Dictionary || kind == CodedKind::MutableDictionary;
}

inline bool isSet(CodedKind kind)
{
    return kind == CodedKind::Set || kind == CodedKind::MutableSet;
}

/// The elements of a collection, as they are now: encoding one may change the collection. A dictionary's are
/// its keys, then its values.
inline std::vector<NSId> elementsOf(const NSObject& collection, CodedKind kind)
{
    std::vector<NSId> elements;
    if (isDictionary(kind)) {
        const auto& dictionary = static_cast<const NSDictionary&>(collection);
        const NSUInteger count = dictionary.count();
        elements.resize(2 * count);
        NSUInteger at = 0;
        for (const auto& [key, value] : dictionary) {
            elements[at] = key;
            elements[count + at++] = value;
        }
    } else if (isSet(kind)) {
        const auto& set = static_cast<const NSSet&>(collection);
        elements.assign(set.begin(), set.end());
    } else {
        const auto& array = static_cast<const NSArray&>(collection);
        elements.reserve(array.count());
        for (NSUInteger at = 0; at < array.count(); ++at)
            elements.push_back(array.elementAtPosition(at));
    }
    return elements;
}

}
