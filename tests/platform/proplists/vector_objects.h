#pragma once

#include "LUMPlatform/NSObject.h"
#include "tests/vector_file.h"

#include <string>

/// The object that a typed description stands for: {"t": type, "v": value}.
NSId objectDescribedBy(const vectors::Json& json);

/// The type of an object, and of all inside it, as text: "int", "[str, real]", "{a: int}", keys in order.
/// Equality of objects does not tell 1 from 1.0 or true; this does.
std::string typesOf(const NSId& object);

/// A file of tests/data/vectors.
std::string contentOfVector(const std::string& name);
