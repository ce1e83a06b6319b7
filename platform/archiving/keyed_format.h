#pragma once

#include <cstdint>
#include <string_view>

/// The layout of keyed archives; docs/formats/keyed-archive.md tells it byte by byte.
namespace platform::keyed {

inline constexpr std::u16string_view kArchiverKey = u"$archiver";
inline constexpr std::u16string_view kArchiver = u"NSKeyedArchiver";
inline constexpr std::u16string_view kVersionKey = u"$version";
inline constexpr std::int64_t kVersion = 100000;
inline constexpr std::u16string_view kTopKey = u"$top";
inline constexpr std::u16string_view kObjectsKey = u"$objects";

inline constexpr std::u16string_view kNull = u"$null"; ///< What stands in slot 0.
inline constexpr std::u16string_view kClassKey = u"$class";
inline constexpr std::u16string_view kClassNameKey = u"$classname";
inline constexpr std::u16string_view kClassesKey = u"$classes";

inline constexpr std::u16string_view kKeysKey = u"NS.keys";
inline constexpr std::u16string_view kElementsKey = u"NS.objects";
inline constexpr std::u16string_view kStringKey = u"NS.string";
inline constexpr std::u16string_view kDataKey = u"NS.data";

}
