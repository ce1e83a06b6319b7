#pragma once

#include "LUMPlatform/NSArgument.h"
#include "platform/archiving/sequential_reader.h"
#include "platform/archiving/sequential_writer.h"

namespace platform {

/// A whole number of any width as it was read.
struct Whole {
    std::int64_t bits;
    bool isUnsigned64 = false; ///< The bits are a number without a sign.
};

/// Whether a type code is one of a whole number, "B" for truth values included.
bool isWholeType(char type);
Whole readWhole(SequentialReader& reader, char type);

/// A value that is no object, by its type code. A type that archives do not take raises
/// NSInvalidArgumentException.
void writeScalar(SequentialWriter& writer, const NSArgument& value);
/// A value of type `written`, which stands in the archive, as one of type `asked`. Raises
/// NSInvalidUnarchiveOperationException when they are of different kinds, NSRangeException when it does not
/// fit.
NSArgument readScalar(SequentialReader& reader, char written, const char* asked);

}
