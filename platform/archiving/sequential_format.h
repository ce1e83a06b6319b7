#pragma once

#include <cstdint>
#include <string_view>

/// The layout of sequential archives; docs/formats/sequential-archive.md tells it byte by byte.
namespace platform::sequential {

inline constexpr std::uint8_t kVersion = 4;
inline constexpr std::string_view kLittleEndian = "streamtyped";
inline constexpr std::string_view kBigEndian = "typedstream";
inline constexpr int kSystem = 1000;

/// What a byte means that is not an integer itself. All lie between kFirstTag and kLastTag.
enum Tag : std::int8_t {
    kInteger2 = -127, ///< Two bytes follow.
    kInteger4 = -126,
    kReal = -125, ///< Four bytes follow, or eight, by the type.
    kNew = -124, ///< What follows is met for the first time.
    kNull = -123,
    kEnd = -122, ///< Of an object.
    kInteger8 = -121,
};
inline constexpr int kFirstTag = -128;
inline constexpr int kLastTag = -111;
/// What number 0 of something met before is written as; the others follow.
inline constexpr int kFirstReference = -110;

constexpr bool isTag(int value)
{
    return value >= kFirstTag && value <= kLastTag;
}

}
