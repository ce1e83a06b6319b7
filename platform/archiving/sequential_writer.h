#pragma once

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSData.h"
#include "platform/archiving/sequential_format.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace platform {

/// Writes the parts of a sequential archive and keeps count of what is there already: texts by one row of
/// numbers, objects, classes and C strings by another.
class SequentialWriter {
public:
    /// Begins an archive at the end of `data`.
    explicit SequentialWriter(const NSRef<NSMutableData>& data);

    const NSRef<NSMutableData>& data() const { return mData; }

    void writeTag(sequential::Tag tag) { writeByte(static_cast<std::uint8_t>(tag)); }
    void writeByte(std::uint8_t byte) { mData->appendBytes(&byte, 1); }
    void writeBytes(const void* bytes, NSUInteger length) { mData->appendBytes(bytes, length); }
    void writeInteger(std::int64_t value);
    void writeReal(float value);
    void writeReal(double value);
    /// The length and the bytes, every time.
    void writeText(std::string_view text);
    /// The same the first time, then its number.
    void writeSharedText(std::string_view text);
    /// A text as a value of type "*".
    void writeCString(const std::string& text);
    /// The class and those above it, as far as they are not there.
    void writeClass(const NSClass& type);
    /// Writes the number of an object that is there; false, and gives it one, when it is not.
    bool writeReference(const NSId& object);

private:
    template<typename T> void writeLittleEndian(T value);
    template<typename T> void writeRealOf(T value);
    bool writeNumberOf(const void* known);

    NSRef<NSMutableData> mData;
    std::unordered_map<std::string, std::int64_t> mTexts;
    std::unordered_map<const void*, std::int64_t> mNumbers; // objects and classes
    std::unordered_map<std::string, std::int64_t> mCStrings;
    std::int64_t mNextNumber = 0; // of what has a place in either of the two
    std::vector<NSId> mKept; // so that no new object is taken for one that has ended
};

}
