#pragma once

namespace platform {

/// The character of a byte in the encoding that octal escapes of the old text form are in; ASCII below 128.
/// The two bytes that mean nothing give U+FFFD.
char16_t characterFromNextStep(unsigned char byte);

}
