#include "platform/archiving/whole_number.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

#include <utility>

namespace platform {
namespace {

template<typename T> NSArgument fitting(const Whole& whole)
{
    const bool fits = whole.isUnsigned64 ? std::in_range<T>(static_cast<std::uint64_t>(whole.bits))
                                         : std::in_range<T>(whole.bits);
    if (!fits)
        throw NSException(NSRangeException, "an integer of the archive does not fit the type asked for");
    return NSArgument::of(static_cast<T>(whole.bits));
}

}

bool isWholeType(char type)
{
    return std::string_view("cCsSiIlLqQB").find(type) != std::string_view::npos;
}

bool isRealType(char type)
{
    return type == 'f' || type == 'd';
}

NSArgument wholeAs(const Whole& whole, char type)
{
    switch (type) {
    case 'c':
        return fitting<std::int8_t>(whole);
    case 'C':
        return fitting<std::uint8_t>(whole);
    case 's':
        return fitting<std::int16_t>(whole);
    case 'S':
        return fitting<std::uint16_t>(whole);
    case 'i':
        return fitting<std::int32_t>(whole);
    case 'I':
        return fitting<std::uint32_t>(whole);
    case 'Q':
        return fitting<std::uint64_t>(whole);
    default:
        return fitting<std::int64_t>(whole);
    }
}

}
