#include "watching/inotify_decode.h"
#include "watching/vnode_changes.h"

#include <cstdlib>

// Both decoders, and the folding of what the first one finds.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::span<const std::byte> bytes = std::as_bytes(std::span(data, size));
    lum::RawChanges folded;
    std::size_t used = 0;
    for (const lum::InotifyEvent& event : lum::decodeInotify(bytes)) {
        used += 16 + event.name.size();
        if (event.name.find('\0') != std::string_view::npos)
            std::abort();
        folded.add(event);
    }
    if (used > size)
        std::abort();
    lum::WatchedState state;
    lum::vnodeChanges(folded, state, std::nullopt);

    int last = -1;
    for (const int watch : lum::decodeInotifyWatches({ reinterpret_cast<const char*>(data), size })) {
        if (watch < last)
            std::abort();
        last = watch;
    }
    return 0;
}
