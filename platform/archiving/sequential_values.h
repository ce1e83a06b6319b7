#pragma once

#include "platform/archiving/sequential_reader.h"
#include "platform/archiving/sequential_writer.h"

class NSNumber;
class NSString;

namespace platform {

/// What stands inside strings and numbers, and blocks of bytes.
void writeString(SequentialWriter& writer, const NSString& string);
NSRef<NSString> readString(SequentialReader& reader);
void writeNumber(SequentialWriter& writer, const NSNumber& number);
NSRef<NSNumber> readNumber(SequentialReader& reader);
/// Raises NSInvalidArgumentException for bytes at null, and for 2 GiB and more.
void writeBlock(SequentialWriter& writer, const void* bytes, NSUInteger length);
std::span<const std::byte> readBlock(SequentialReader& reader);

}
