#include "platform/files/missed_search.h"

#include <algorithm>

namespace platform {

bool MissedSearch::tells(const std::string& folder, std::uint64_t onVolume, std::int64_t folderModified,
    std::int64_t now, std::uint64_t inode) const
{
    constexpr std::int64_t kLasts = 1'000'000'000;
    return folder == from && onVolume == volume && folderModified == modified && now - at < kLasts
        && !std::ranges::binary_search(inodes, inode);
}

}
