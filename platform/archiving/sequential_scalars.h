#pragma once

#include "platform/archiving/sequential_reader.h"
#include "platform/archiving/sequential_writer.h"
#include "platform/archiving/whole_number.h"

namespace platform {

Whole readWhole(SequentialReader& reader, char type);

/// A value that is no object, by its type code. A type that archives do not take raises
/// NSInvalidArgumentException.
void writeScalar(SequentialWriter& writer, const NSArgument& value);
/// A value of type `written`, which stands in the archive, as one of type `asked`. Raises
/// NSInvalidUnarchiveOperationException when they are of different kinds, NSRangeException when it does not
/// fit.
NSArgument readScalar(SequentialReader& reader, char written, const char* asked);

}
