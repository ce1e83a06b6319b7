#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// One byte for each character: the encodings of type codes and of old files.
enum class ByteEncoding { Ascii, MacRoman };

/// The byte of `unit`, or null when `encoding` has none. Canonical equivalents are other characters:
/// in Mac OS Roman, U+03A9 is 0xBD and the ohm sign U+2126 is nothing.
std::optional<unsigned char> byteFromUnit(char16_t unit, ByteEncoding encoding);

/// Null when one character has no byte.
std::optional<std::string> bytesFromUtf16(std::u16string_view text, ByteEncoding encoding);

/// Null when `encoding` is Ascii and a byte is not.
std::optional<std::u16string> utf16FromBytes(std::string_view bytes, ByteEncoding encoding);

/// Text of unknown origin: UTF-8 when it is that, else Mac OS Roman, in which every byte means something.
std::u16string utf16FromUnknownBytes(std::string_view bytes);

}
