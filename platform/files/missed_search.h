#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

/// What a search came by that did not find its object. For a second, and as long as nothing changes in the
/// folder it began in, the next one from there would come by the same: when a folder with a thousand files is
/// removed, one search is enough to know that all are gone.
struct MissedSearch {
    std::string from; ///< The folder.
    std::uint64_t volume = 0;
    std::int64_t modified = 0; ///< The folder.
    std::int64_t at = 0; ///< By the steady clock, in nanoseconds, like the time asked about.
    std::vector<std::uint64_t> inodes; ///< In order.

    /// Whether a search from that folder would not find the object with this number either.
    bool tells(const std::string& folder, std::uint64_t onVolume, std::int64_t folderModified,
        std::int64_t now, std::uint64_t inode) const;
};

}
