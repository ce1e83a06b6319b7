#include "platform/archiving/sequential_reader.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSUnarchiver.h"

#include <bit>

namespace platform {

using namespace sequential;

SequentialReader::SequentialReader(const NSRef<NSData>& data)
    : mData(NSData::dataWithData(data)), mBytes(mData->bytes())
{
    if (readByte() != kVersion)
        fault("this is no sequential archive");
    const std::string_view signature = readText();
    if (signature != kLittleEndian && signature != kBigEndian)
        fault("this is no sequential archive");
    mIsBigEndian = signature == kBigEndian;
    readInteger(); // the system that wrote it, of which none writes anything differently
}

void SequentialReader::fault(const std::string& text) const
{
    throw NSException(
        NSInconsistentArchiveException, text + " at byte " + std::to_string(mAt) + " of the archive");
}

std::uint8_t SequentialReader::readByte()
{
    return std::to_integer<std::uint8_t>(readBytes(1)[0]);
}

std::span<const std::byte> SequentialReader::readBytes(std::uint64_t length)
{
    if (length > bytesLeft())
        fault("the archive ends too early");
    auto bytes = mBytes.subspan(mAt, length);
    mAt += length;
    return bytes;
}

template<typename Bits> Bits SequentialReader::readBits()
{
    const auto bytes = readBytes(sizeof(Bits));
    Bits bits = 0;
    for (std::size_t at = 0; at < sizeof(Bits); ++at) {
        const std::size_t shift = 8 * (mIsBigEndian ? sizeof(Bits) - 1 - at : at);
        bits = static_cast<Bits>(bits | std::to_integer<Bits>(bytes[at]) << shift);
    }
    return bits;
}

int SequentialReader::readHead()
{
    return static_cast<std::int8_t>(readByte());
}

std::int64_t SequentialReader::readIntegerAfter(int head)
{
    switch (head) {
    case kInteger2:
        return static_cast<std::int16_t>(readBits<std::uint16_t>());
    case kInteger4:
        return static_cast<std::int32_t>(readBits<std::uint32_t>());
    case kInteger8:
        return static_cast<std::int64_t>(readBits<std::uint64_t>());
    default:
        if (isTag(head))
            fault("there is no integer");
        return head;
    }
}

std::int64_t SequentialReader::readInteger()
{
    return readIntegerAfter(readHead());
}

double SequentialReader::readReal(std::size_t size)
{
    const int head = readHead();
    if (head != kReal)
        return static_cast<double>(readIntegerAfter(head));
    if (size == sizeof(float))
        return static_cast<double>(std::bit_cast<float>(readBits<std::uint32_t>()));
    return std::bit_cast<double>(readBits<std::uint64_t>());
}

std::string_view SequentialReader::readText()
{
    const std::int64_t length = readInteger();
    if (length < 0)
        fault("a text has no length");
    const auto bytes = readBytes(static_cast<std::uint64_t>(length));
    return { reinterpret_cast<const char*>(bytes.data()), bytes.size() };
}

std::size_t SequentialReader::numberAfter(int head, std::size_t count)
{
    // References go on where the tags end, and past one byte as other integers do.
    // What is before the first reference becomes larger than any number.
    const auto number =
        static_cast<std::uint64_t>(readIntegerAfter(head)) + std::uint64_t { -kFirstReference };
    if (number >= count)
        fault("a reference leads to nothing");
    return number;
}

std::string_view SequentialReader::readSharedText()
{
    const int head = readHead();
    if (head != kNew)
        return mTexts[numberAfter(head, mTexts.size())];
    const std::string_view text = readText();
    mTexts.push_back(text);
    return text;
}

const SequentialReader::Numbered& SequentialReader::knownAfter(int head, Numbered::Kind kind)
{
    const Numbered& known = mNumbered[numberAfter(head, mNumbered.size())];
    if (known.kind != kind)
        fault("a reference leads to something else");
    return known;
}

std::optional<std::string_view> SequentialReader::readCString()
{
    const int head = readHead();
    if (head == kNull)
        return std::nullopt;
    if (head != kNew)
        return knownAfter(head, Numbered::CString).text;
    const std::size_t number = mNumbered.size();
    mNumbered.push_back({ Numbered::CString, true, nullptr, {} });
    const std::string_view text = readSharedText();
    mNumbered[number].text = text;
    return text;
}

std::string_view SequentialReader::readClass()
{
    std::optional<std::string_view> name;
    while (true) {
        const int head = readHead();
        if (head != kNew) {
            if (head == kNull && name)
                return *name;
            const std::string_view known = knownAfter(head, Numbered::Class).text;
            return name.value_or(known);
        }
        const std::size_t number = mNumbered.size();
        mNumbered.push_back({ Numbered::Class, true, nullptr, {} });
        const std::string_view text = readSharedText();
        mNumbered[number].text = text;
        readInteger(); // the version, which no class known here looks at
        if (!name)
            name = text;
    }
}

SequentialReader::Reference SequentialReader::readReference()
{
    const int head = readHead();
    if (head == kNull)
        return { Reference::Null, 0 };
    if (head != kNew) {
        const Numbered& known = knownAfter(head, Numbered::Object);
        return { Reference::Known, static_cast<std::size_t>(&known - mNumbered.data()) };
    }
    mNumbered.push_back({ Numbered::Object, false, nullptr, {} });
    return { Reference::New, mNumbered.size() - 1 };
}

void SequentialReader::readEnd()
{
    if (readHead() != kEnd)
        fault("an object holds more than its class reads");
}

void SequentialReader::setObject(std::size_t number, const NSId& object)
{
    mNumbered[number].object = object;
    mNumbered[number].isMade = true;
}

NSId SequentialReader::object(std::size_t number) const
{
    if (!mNumbered[number].isMade)
        throw NSException(NSInvalidUnarchiveOperationException,
            "an object of the archive is needed while it is being made (NSCoder::announceObject)");
    return mNumbered[number].object;
}

}
