#include "LUMPlatform/NSFormatArgument.h"

#include "LUMPlatform/NSString.h"

#include <algorithm>
#include <cstring>

// The string of a constant lives as long as the process, so borrowing it is safe.
NSFormatArgument::NSFormatArgument(const NSStringConstant& constant) : NSFormatArgument(constant.string()) { }

std::string_view NSFormatArgument::bytes(std::size_t limit) const
{
    const auto* text = static_cast<const char*>(mPointer);
    if (!text)
        return "(null)";
    return { text, mLength == kTerminated ? strnlen(text, limit) : std::min(mLength, limit) };
}
