// Every way that data is packed, written as text, framed and summed up, for a text or the first argument's
// file.

#include "LUMFoundation/LUMByteCountFormatter.h"
#include "LUMFoundation/LUMData_Base32.h"
#include "LUMFoundation/LUMData_Compression.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSString.h"

#include <iomanip>
#include <iostream>

int main(int argc, char** argv)
{
    NSRef<NSError> error;
    NSRef<NSData> data = argc > 1 ? NSData::dataWithContentsOfFile(argv[1], &error)
                                  : NSRef<NSString>("The quick brown fox jumps over the lazy dog.\n")
                                        ->dataUsingEncoding(NSUTF8StringEncoding);
    if (!data) {
        std::cerr << argv[1] << ": " << error->localizedDescription() << "\n";
        return 1;
    }
    auto packed = LUMData_Compression::gzipDeflate(data);
    auto text = LUMData_Compression::base32String(data);
    auto framed = LUMData_Compression::encodeCOBS(data); // without a zero byte, so that one can end it
    std::cout << "size    " << LUMByteCountFormatter::stringWithByteCount(data->length()) << ", "
              << packed->length() << " bytes as gzip, " << text->length() << " as Base32, "
              << framed->length() << " as COBS\n"
              << "CRC-32  " << std::hex << std::setfill('0') << std::setw(8)
              << LUMData_Compression::crc32(data) << "\nMD5     "
              << LUMData_Compression::md5DigestString(data) << "\nSHA-1   "
              << LUMData_Compression::sha1DigestString(data) << "\n";
    const bool comesBack = NSEqual(LUMData_Compression::gzipInflate(packed), data)
        && NSEqual(LUMData_Base32::wholeData(text), data);
    std::cout << (comesBack ? "both come back\n" : "something was lost\n");
    return comesBack ? 0 : 1;
}
