#pragma once

#include "LUMPlatform/NSArgument.h"

namespace platform {

/// A whole number of any width as it was read.
struct Whole {
    std::int64_t bits;
    bool isUnsigned64 = false; ///< The bits are a number without a sign.
};

/// Whether a type code is one of a whole number, "B" for truth values included.
bool isWholeType(char type);
bool isRealType(char type);
/// The number as a value of a type of whole numbers; raises NSRangeException when it does not fit.
NSArgument wholeAs(const Whole& whole, char type);

}
