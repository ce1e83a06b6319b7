#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace lum {

/// The bits of an inotify event that are of interest, with the values of the kernel's interface.
namespace inotify {
inline constexpr std::uint32_t kModify = 0x00000002;
inline constexpr std::uint32_t kAttrib = 0x00000004;
inline constexpr std::uint32_t kMovedFrom = 0x00000040;
inline constexpr std::uint32_t kMovedTo = 0x00000080;
inline constexpr std::uint32_t kCreate = 0x00000100;
inline constexpr std::uint32_t kDelete = 0x00000200;
inline constexpr std::uint32_t kDeleteSelf = 0x00000400;
inline constexpr std::uint32_t kMoveSelf = 0x00000800;
inline constexpr std::uint32_t kUnmount = 0x00002000;
inline constexpr std::uint32_t kOverflow = 0x00004000;
inline constexpr std::uint32_t kIgnored = 0x00008000;
inline constexpr std::uint32_t kOnlyFolder = 0x01000000;
inline constexpr std::uint32_t kMaskAdd = 0x20000000;
inline constexpr std::uint32_t kIsFolder = 0x40000000;
}

/// One event as the kernel tells it.
struct InotifyEvent {
    int watch; ///< The kernel's watch number; -1 for an overflow.
    std::uint32_t flags;
    std::uint32_t cookie; ///< Joins the two halves of a rename.
    std::string_view
        name; ///< The child of a watched folder that it is about; empty for the watched object itself.

    friend bool operator==(const InotifyEvent&, const InotifyEvent&) = default;
};

/// The whole events in what was read from an inotify descriptor. A last event that is cut off is left out, as
/// is everything behind a length that reaches past the end. The names point into `bytes`.
std::vector<InotifyEvent> decodeInotify(std::span<const std::byte> bytes);

/// The numbers of the live watches, ascending, in the text of /proc/self/fdinfo for an inotify descriptor.
/// Lines that do not tell of a watch are skipped.
std::vector<int> decodeInotifyWatches(std::string_view fdinfo);

}
