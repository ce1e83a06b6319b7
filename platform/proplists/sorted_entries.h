#pragma once

#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSString.h"

#include <vector>

namespace platform {

/// An entry of a dictionary that is being written. The dictionary keeps both objects.
struct SortedEntry {
    std::uint64_t head = 0; ///< The first four code units of the key, which decide most comparisons.
    const NSString* key = nullptr;
    const NSObject* value = nullptr;
};

/// Appends the entries of a dictionary in the order of their keys by code unit. Throws PropertyListFault when
/// a key is no string.
void appendSortedEntries(const NSDictionary& dictionary, std::vector<SortedEntry>& entries);

}
