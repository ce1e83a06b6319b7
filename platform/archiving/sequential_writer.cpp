#include "platform/archiving/sequential_writer.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

#include <bit>
#include <cmath>
#include <utility>

namespace platform {

using namespace sequential;

SequentialWriter::SequentialWriter(const NSRef<NSMutableData>& data) : mData(data)
{
    writeByte(kVersion);
    writeText(kLittleEndian);
    writeInteger(kSystem);
}

template<typename T> void SequentialWriter::writeLittleEndian(T value)
{
    std::uint8_t bytes[sizeof(T)];
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(value);
        value = static_cast<T>(static_cast<std::uint64_t>(value) >> 8);
    }
    writeBytes(bytes, sizeof bytes);
}

void SequentialWriter::writeInteger(std::int64_t value)
{
    if (std::in_range<std::int8_t>(value) && !isTag(static_cast<int>(value)))
        writeByte(static_cast<std::uint8_t>(value));
    else if (std::in_range<std::int16_t>(value)) {
        writeTag(kInteger2);
        writeLittleEndian(static_cast<std::uint16_t>(value));
    } else if (std::in_range<std::int32_t>(value)) {
        writeTag(kInteger4);
        writeLittleEndian(static_cast<std::uint32_t>(value));
    } else {
        writeTag(kInteger8);
        writeLittleEndian(static_cast<std::uint64_t>(value));
    }
}

template<typename T> void SequentialWriter::writeRealOf(T value)
{
    using Bits = std::conditional_t<sizeof(T) == 4, std::uint32_t, std::uint64_t>;
    constexpr T kLimit = 1 << 30;
    const bool isIntegral = value == std::floor(value) && std::abs(value) <= kLimit;
    if (isIntegral && !(value == 0 && std::signbit(value))) {
        writeInteger(static_cast<std::int64_t>(value));
        return;
    }
    writeTag(kReal);
    writeLittleEndian(std::bit_cast<Bits>(value));
}

void SequentialWriter::writeReal(float value)
{
    writeRealOf(value);
}

void SequentialWriter::writeReal(double value)
{
    writeRealOf(value);
}

void SequentialWriter::writeText(std::string_view text)
{
    writeInteger(static_cast<std::int64_t>(text.size()));
    writeBytes(text.data(), text.size());
}

void SequentialWriter::writeSharedText(std::string_view text)
{
    const auto [known, isNew] = mTexts.emplace(std::string(text), static_cast<std::int64_t>(mTexts.size()));
    if (!isNew) {
        writeInteger(kFirstReference + known->second);
        return;
    }
    writeTag(kNew);
    writeText(text);
}

void SequentialWriter::writeCString(const std::string& text)
{
    const auto [known, isNew] = mCStrings.emplace(text, mNextNumber);
    if (!isNew) {
        writeInteger(kFirstReference + known->second);
        return;
    }
    ++mNextNumber;
    writeTag(kNew);
    writeSharedText(text);
}

bool SequentialWriter::writeNumberOf(const void* known)
{
    const auto [place, isNew] = mNumbers.emplace(known, mNextNumber);
    if (isNew)
        ++mNextNumber;
    else
        writeInteger(kFirstReference + place->second);
    return !isNew;
}

void SequentialWriter::writeClass(const NSClass& type)
{
    for (const NSClass* at = &type; at; at = at->superclass()) {
        if (writeNumberOf(at))
            return;
        writeTag(kNew);
        writeSharedText(at->name());
        // Classes are in version 0; strings alone have changed what they write, once.
        writeInteger(at->isSubclassOf(NSString::classObject()) ? 1 : 0);
    }
    writeTag(kNull);
}

bool SequentialWriter::writeReference(const NSId& object)
{
    if (writeNumberOf(object.get()))
        return true;
    mKept.push_back(object);
    return false;
}

}
