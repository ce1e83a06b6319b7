#pragma once

#include "platform/archiving/class_codings.h"
#include "platform/archiving/sequential_reader.h"
#include "platform/archiving/sequential_writer.h"

namespace platform {

/// What stands inside an object of a class known by heart. What it refers to goes through `coder`.
void encodeSequentially(NSCoder& coder, SequentialWriter& writer, CodedKind kind, const NSObject& object);
/// The object that has it inside. Collections announce themselves before they are filled.
NSId decodeSequentially(NSCoder& coder, SequentialReader& reader, CodedKind kind);

}
