#pragma once

#include "platform/files/file_identity.h"

#include <chrono>
#include <string>

namespace platform {

struct SearchLimits {
    std::size_t entries;
    std::chrono::milliseconds time; ///< Does not count for the hundred nearest folders.
    /// What the last search did not come by is not looked for again; see MissedSearch.
    bool mayTrustTheLast = false;
};

/// For what an accessor does on the way. The entries of one large folder must fit in.
inline constexpr SearchLimits kGlance { 200'000, std::chrono::milliseconds(50), true };
/// For what somebody asked for.
inline constexpr SearchLimits kSearch { 200'000, std::chrono::milliseconds(250) };

/// Looks for an object on its volume, from where it was last known outward: in that folder first, then below
/// it, then in and below each folder above. When a folder of the path is gone, the rest of the path is tried
/// in all that are beside it, since it may have been renamed. Only names and numbers of entries are read; a
/// candidate is looked at closely. 0 and where the object is, -ENOENT when it was not found, or the limits
/// were reached first.
///
/// `ancestors` are the numbers of the folders that were above it, the nearest first, as far as they are
/// known: one that was renamed and changed is recognised by its number, and searched before all others.
int searchObject(const FileIdentity& sought, const std::string& lastPath,
    std::span<const std::uint64_t> ancestors, SearchLimits limits, std::string& found);

}
