#include "LUMFoundation/LUMByteCountFormatter.h"

#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"

namespace {

constexpr std::uint64_t kMegabyte = 1u << 20;
constexpr std::uint64_t kGigabyte = 1u << 30;

}

const NSClass& LUMByteCountFormatter::classObject()
{
    static const NSClass& type = NSClass::define("LUMByteCountFormatter", &NSFormatter::classObject(), {});
    return type;
}

NSRef<NSString> LUMByteCountFormatter::stringWithByteCount(std::uint64_t count)
{
    const auto bytes = static_cast<double>(count);
    if (count >= kGigabyte)
        return NSString::stringWithFormat("%.1f GB", bytes / static_cast<double>(kGigabyte));
    if (count >= kMegabyte)
        return NSString::stringWithFormat("%.1f MB", bytes / static_cast<double>(kMegabyte));
    // Deliberate: there is no step for single bytes.
    return NSString::stringWithFormat("%.0f KB", bytes / 1024.0);
}

NSRef<NSString> LUMByteCountFormatter::stringForObjectValue(const NSId& value) const
{
    static const NSSelector unsignedLongValue("unsignedLongValue");
    if (!value || !value->respondsToSelector(unsignedLongValue))
        return stringWithByteCount(0);
    return stringWithByteCount(NSSend<std::uint64_t>(value, unsignedLongValue));
}
