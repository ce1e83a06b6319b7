#include "LUMFoundation/LUMData_Base32.h"

#include "data/base32.h"
#include "data/data_of_buffer.h"

NSRef<NSData> LUMData_Base32::wholeData(const NSRef<NSString>& text)
{
    if (!text)
        return nullptr;
    return lum::dataOfBuffer(lum::decodeBase32(text->characters(), lum::Base32Digits::Strict));
}
