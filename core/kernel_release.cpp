#include "core/kernel_release.h"

#include <charconv>

namespace lum {

namespace {

/// Takes the number at the beginning of `text` off it.
std::optional<std::int32_t> takeNumber(std::string_view& text)
{
    std::int32_t number = 0;
    auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc() || text.front() == '-')
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

}

KernelRelease KernelRelease::parse(std::string_view text)
{
    KernelRelease release;
    release.majorNumber = takeNumber(text);
    if (release.majorNumber && text.starts_with('.')) {
        text.remove_prefix(1);
        release.minorNumber = takeNumber(text);
    }
    return release;
}

}
