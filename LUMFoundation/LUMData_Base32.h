#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSString.h"

/// The way back from LUMData_Compression::base32String().
namespace LUMData_Base32 {

/// All the bytes that a Base32 text stands for, empty data for the empty text.
///
/// Letters count in either case. Null for null and for what base32String() never writes: any other character,
/// padding included, a length of 1, 3 or 6 modulo 8, bits that no byte uses and that are not 0; and when
/// there is not enough memory. Time is linear. Threads: any.
///
///     auto data = LUMData_Base32::wholeData("NBSWY3DP"); // hello
LUM_EXPORT NSRef<NSData> wholeData(const NSRef<NSString>& text);

}
