#include "LUMFoundation/LUMData_Base32.h"

#include "data/base32.h"

NSRef<NSData> LUMData_Base32::wholeData(const NSRef<NSString>& text)
{
    auto bytes = text ? lum::decodeBase32(text->characters(), lum::Base32Digits::Strict) : std::nullopt;
    if (!bytes)
        return nullptr;
    const std::size_t size = bytes->size();
    return NSData::dataWithBytesNoCopy(bytes->leak(), size);
}
