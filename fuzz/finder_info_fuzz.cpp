#include "fuzz/require.h"
#include "platform/files/finder_info.h"
#include "platform/files/folder_entries.h"

// What file servers leave in attributes, and what the kernel lists.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::span<const std::byte> bytes = std::as_bytes(std::span(data, size));
    for (auto found : { platform::finderBytesOfAppleDouble(bytes), platform::finderBytesOfAfpInfo(bytes) }) {
        if (!found)
            continue;
        platform::FinderBytes again = *found;
        platform::store(platform::fileInfoFrom(*found), again);
        require(again == *found);
    }
    std::span<const std::byte> unread = bytes;
    platform::FolderEntry entry;
    std::size_t used = 0;
    while (platform::takeFolderEntry(unread, entry)) {
        require(entry.name.find('\0') == std::string_view::npos);
        used += entry.name.size();
    }
    require(used <= size);
    return 0;
}
