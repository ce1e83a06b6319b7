#pragma once

#include "LUMPlatform/NSCoding.h"

#include <vector>

namespace platform {

/// The classes that archivers know by heart; all others go by their functions.
enum class CodedKind : std::uint8_t {
    Custom,
    String,
    MutableString,
    Number,
    Data,
    Array,
    MutableArray,
    Dictionary,
    MutableDictionary,
    Set,
    MutableSet,
};

/// How the objects of a registered class are archived.
struct ClassCoding {
    const NSClass* type;
    CodedKind kind = CodedKind::Custom;
    NSClassCoding functions {};
};

/// Null when the class is not registered. Answers live as long as the process; threads: any.
const ClassCoding* classCoding(const NSClass& type);
const ClassCoding* classCodingNamed(std::string_view name);
/// That of the object's class; raises NSInvalidArgumentException when that is not registered.
const ClassCoding& requiredClassCoding(const NSObject& object);

/// The platform's own classes that go by functions: dates, null, and so on.
std::vector<ClassCoding> valueCodings();

}
