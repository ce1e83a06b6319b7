#include "watching/inotify_decode.h"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace lum {

namespace {

// struct inotify_event without its name. A copy of the layout keeps the decoder free of system headers.
struct Header {
    std::int32_t watch;
    std::uint32_t flags;
    std::uint32_t cookie;
    std::uint32_t nameLength;
};
static_assert(sizeof(Header) == 16);

}

std::vector<InotifyEvent> decodeInotify(std::span<const std::byte> bytes)
{
    std::vector<InotifyEvent> events;
    while (bytes.size() >= sizeof(Header)) {
        Header header;
        std::memcpy(&header, bytes.data(), sizeof(header));
        bytes = bytes.subspan(sizeof(header));
        if (header.nameLength > bytes.size())
            break;
        // The name is padded with zero bytes up to the length that the header tells.
        const std::string_view padded(reinterpret_cast<const char*>(bytes.data()), header.nameLength);
        events.push_back({ header.watch, header.flags, header.cookie, padded.substr(0, padded.find('\0')) });
        bytes = bytes.subspan(header.nameLength);
    }
    return events;
}

std::vector<int> decodeInotifyWatches(std::string_view fdinfo)
{
    constexpr std::string_view kPrefix = "inotify wd:";
    std::vector<int> watches;
    while (!fdinfo.empty()) {
        const std::string_view line = fdinfo.substr(0, fdinfo.find('\n'));
        fdinfo.remove_prefix(std::min(fdinfo.size(), line.size() + 1));
        if (!line.starts_with(kPrefix))
            continue;
        int watch = -1;
        const auto parsed =
            std::from_chars(line.data() + kPrefix.size(), line.data() + line.size(), watch, 16);
        if (parsed.ec == std::errc() && watch >= 0)
            watches.push_back(watch);
    }
    std::sort(watches.begin(), watches.end());
    return watches;
}

}
