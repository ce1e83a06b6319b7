#include "platform/proplists/binary_reader.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "platform/proplists/binary_format.h"
#include "platform/proplists/property_list_fault.h"
#include "platform/proplists/property_list_uid.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace platform {
namespace {

using namespace binary;

/// Reads objects by number, each once, with the containers being read on a stack of its own.
///
/// Two sums keep hostile files small. All objects read lie in the file without overlapping, so their bytes
/// together are no more than the file's. And each object knows how many objects a walk through it meets, so
/// that a few shared containers cannot stand for billions.
class Reader {
public:
    Reader(std::span<const std::byte> bytes, const NSDecodingLimits& limits) : mBytes(bytes), mLimits(limits)
    {
        readTrailer();
    }

    NSId read()
    {
        enter(mTop);
        while (!mOpen.empty()) {
            const Container& container = mOpen.back();
            const std::size_t next = container.children.size();
            if (next == container.count)
                leave();
            else
                enter(integerAt(container.references + next * mReferenceSize, mReferenceSize));
        }
        return mObjects[mTop].object;
    }

private:
    /// What is known of an object: nothing, that it is being read, or itself and its weight.
    struct Known {
        static constexpr std::uint64_t kUnread = 0;
        static constexpr std::uint64_t kOpen = ~std::uint64_t { 0 };

        NSId object;
        std::uint64_t weight = kUnread; ///< How many objects a walk through it meets, itself included.
    };
    /// An array or dictionary of which not all children are read. A dictionary's are its keys, then values.
    struct Container {
        std::uint64_t number;
        bool isDictionary;
        std::size_t references; ///< Where they begin.
        std::size_t count;
        std::uint64_t weight;
        std::vector<NSId> children;
    };

    [[noreturn]] static void fault(const std::string& text, std::size_t at)
    {
        throw PropertyListFault(text + " at byte " + std::to_string(at));
    }

    void readTrailer()
    {
        if (mBytes.size() < kHeaderSize + kTrailerSize + 1)
            throw PropertyListFault("the binary property list is cut short");
        const std::size_t trailer = mBytes.size() - kTrailerSize;
        constexpr std::size_t kSizes = 6;
        mOffsetSize = integerAt(trailer + kSizes, 1);
        mReferenceSize = integerAt(trailer + kSizes + 1, 1);
        const std::uint64_t count = integerAt(trailer + 8, 8);
        mTop = integerAt(trailer + 16, 8);
        mTable = integerAt(trailer + 24, 8);
        if (mOffsetSize < 1 || mOffsetSize > 8 || mReferenceSize < 1 || mReferenceSize > 8)
            fault("the offsets or references have an impossible size", trailer + kSizes);
        if (mTable <= kHeaderSize || mTable > trailer)
            fault("the table of offsets is said to be outside the file", trailer + 24);
        if (count > (trailer - mTable) / mOffsetSize)
            fault("the table of offsets has no room for all objects", trailer + 8);
        if (count > mLimits.objects)
            fault("there are more than " + std::to_string(mLimits.objects) + " objects", trailer + 8);
        if (mTop >= count)
            fault("the top object is none of the objects", trailer + 16);
        mUnclaimed = mTable - kHeaderSize;
        mObjects.resize(count);
    }

    std::uint64_t integerAt(std::size_t at, std::size_t size) const
    {
        return readInteger(mBytes.data() + at, size);
    }

    /// Hands an object to the innermost open container, or opens it first.
    void enter(std::uint64_t number)
    {
        if (number >= mObjects.size())
            throw PropertyListFault("a reference names object " + std::to_string(number) + " of "
                + std::to_string(mObjects.size()));
        Known& known = mObjects[number];
        if (known.weight == Known::kOpen)
            throw PropertyListFault("object " + std::to_string(number) + " contains itself");
        if (known.weight == Known::kUnread) {
            known.weight = Known::kOpen;
            if (!readObject(number, known.object))
                return;
            known.weight = 1;
        }
        hand(known);
    }

    void hand(const Known& known)
    {
        if (mOpen.empty())
            return;
        Container& container = mOpen.back();
        container.weight += known.weight;
        if (container.weight > mLimits.objects)
            throw PropertyListFault("there are more than " + std::to_string(mLimits.objects) + " objects");
        container.children.push_back(known.object);
    }

    void leave()
    {
        Container container = std::move(mOpen.back());
        mOpen.pop_back();
        Known& known = mObjects[container.number];
        known.weight = container.weight;
        if (container.isDictionary)
            known.object = dictionaryOf(container.children);
        else
            known.object = NSArray::arrayWithObjects(std::move(container.children));
        hand(known);
    }

    static NSRef<NSDictionary> dictionaryOf(std::span<const NSId> keysAndValues)
    {
        const std::size_t count = keysAndValues.size() / 2;
        const auto keys = keysAndValues.first(count);
        for (const NSId& key : keys)
            if (!NSDowncast<NSString>(key.get()))
                throw PropertyListFault("a key of a dictionary is no string");
        return NSDictionary::dictionaryWithObjectsCount(keysAndValues.last(count), keys);
    }

    /// Reads a value; false for a container, which is then open.
    bool readObject(std::uint64_t number, NSId& object)
    {
        const std::size_t entry = mTable + number * mOffsetSize;
        const std::uint64_t offset = integerAt(entry, mOffsetSize);
        if (offset < kHeaderSize || offset >= mTable)
            fault("an object is said to be outside the file", entry);
        const unsigned marker = std::to_integer<unsigned>(mBytes[offset]);
        const unsigned low = marker & 0xF;
        Place place { offset, offset + 1 };
        switch (marker >> 4) {
        case kArray:
            return open(number, false, place, countAt(place, low));
        case kDictionary:
            return open(number, true, place, countAt(place, low));
        case kSingle:
            if (marker == kFalse || marker == kTrue)
                object = NSNumber::numberWithBool(marker == kTrue);
            claim(place, 0, 1);
            break;
        case kInteger:
            if (low <= kLargestInteger)
                object = integerOf(place, std::size_t { 1 } << low);
            break;
        case kReal:
            if (low == 2)
                object = NSNumber::numberWithFloat(
                    std::bit_cast<float>(static_cast<std::uint32_t>(integerAt(claim(place, 4, 1), 4))));
            else if (low == 3)
                object = NSNumber::numberWithDouble(doubleOf(place));
            break;
        case kDate:
            if (low == 3)
                object = NSDate::dateWithTimeIntervalSinceReferenceDate(doubleOf(place));
            break;
        case kData:
            object = dataOf(place, countAt(place, low));
            break;
        case kAscii:
            object = asciiOf(place, countAt(place, low));
            break;
        case kUtf16:
            object = utf16Of(place, countAt(place, low));
            break;
        case kUid:
            object = uidOf(place, low + 1);
            break;
        default:
            break;
        }
        if (!object)
            fault("an object is of no known type", offset);
        return true;
    }

    /// Where an object begins, and where its next part does.
    struct Place {
        std::size_t begin;
        std::size_t next;
    };

    /// Takes the rest of an object, `count` units of some bytes each; answers where that begins.
    std::size_t claim(const Place& place, std::uint64_t count, std::size_t unit)
    {
        if (count > (mTable - place.next) / unit)
            fault("an object is larger than the file", place.begin);
        const std::size_t size = place.next - place.begin + count * unit;
        if (size > mUnclaimed)
            fault("objects overlap", place.begin);
        mUnclaimed -= size;
        return place.next;
    }

    /// The count in the first byte, or in the integer behind it.
    std::uint64_t countAt(Place& place, unsigned low) const
    {
        if (low != kLongCount)
            return low;
        const std::uint64_t marker = place.next < mTable ? integerAt(place.next, 1) : 0;
        const std::size_t size = std::size_t { 1 } << (marker & 0xF);
        constexpr std::size_t kLargest = 16;
        if (marker >> 4 != kInteger || size > kLargest || size >= mTable - place.next)
            fault("an object has no count", place.begin);
        const std::size_t digits = std::min(size, sizeof(std::uint64_t));
        if (integerAt(place.next + 1, size - digits) != 0)
            fault("an object is larger than the file", place.begin);
        place.next += 1 + size;
        return integerAt(place.next - digits, digits);
    }

    bool open(std::uint64_t number, bool isDictionary, const Place& place, std::uint64_t count)
    {
        const std::size_t references = isDictionary ? 2 : 1;
        const std::size_t at = claim(place, count, references * mReferenceSize);
        if (mOpen.size() >= mLimits.depth)
            fault("containers are nested more than " + std::to_string(mLimits.depth) + " deep", place.begin);
        mOpen.push_back({ number, isDictionary, at, count * references, 1, {} });
        mOpen.back().children.reserve(count * references);
        return false;
    }

    /// One, two and four bytes hold unsigned numbers, eight a signed one; sixteen extend either.
    NSId integerOf(const Place& place, std::size_t size)
    {
        const std::size_t at = claim(place, size, 1);
        if (size <= sizeof(std::int64_t))
            return NSNumber::numberWithLongLong(static_cast<std::int64_t>(integerAt(at, size)));
        const std::uint64_t high = integerAt(at, 8);
        const std::uint64_t value = integerAt(at + 8, 8);
        if (high == 0)
            return NSNumber::numberWithUnsignedLongLong(value);
        if (~high != 0 || static_cast<std::int64_t>(value) >= 0)
            fault("an integer has more than 64 bits", place.begin);
        return NSNumber::numberWithLongLong(static_cast<std::int64_t>(value));
    }

    double doubleOf(const Place& place) { return std::bit_cast<double>(integerAt(claim(place, 8, 1), 8)); }

    NSId dataOf(const Place& place, std::uint64_t count)
    {
        auto data = NSData::dataWithBytes(mBytes.data() + claim(place, count, 1), count);
        if (!data)
            throw std::bad_alloc();
        return data;
    }

    NSId asciiOf(const Place& place, std::uint64_t count)
    {
        const auto text = mBytes.subspan(claim(place, count, 1), count);
        auto all = std::byte {};
        auto string = NSString::stringWithLength(count, [&](char16_t* characters) {
            for (std::size_t at = 0; at < text.size(); ++at) {
                characters[at] = std::to_integer<char16_t>(text[at]);
                all |= text[at];
            }
        });
        if (std::to_integer<unsigned>(all) >= 0x80)
            fault("a text in ASCII holds other characters", place.begin);
        return string;
    }

    NSId utf16Of(const Place& place, std::uint64_t count)
    {
        const std::size_t begin = claim(place, count, sizeof(char16_t));
        return NSString::stringWithLength(count, [&](char16_t* characters) {
            for (std::size_t at = 0; at < count; ++at)
                characters[at] = static_cast<char16_t>(integerAt(begin + 2 * at, 2));
        });
    }

    NSId uidOf(const Place& place, std::size_t size)
    {
        const std::size_t at = claim(place, size, 1);
        const std::size_t digits = std::min(size, sizeof(std::uint64_t));
        const std::uint64_t value = integerAt(at + size - digits, digits);
        if (integerAt(at, size - digits) != 0 || !std::in_range<std::uint32_t>(value))
            fault("a reference of an archive has more than 32 bits", place.begin);
        return PropertyListUid::withValue(static_cast<std::uint32_t>(value));
    }

    static constexpr unsigned kLargestInteger = 4; // sixteen bytes

    std::span<const std::byte> mBytes;
    NSDecodingLimits mLimits;
    std::size_t mOffsetSize;
    std::size_t mReferenceSize;
    std::uint64_t mTop;
    std::size_t mTable; // where the offsets begin, and objects end
    std::size_t mUnclaimed; // bytes that no object has taken yet
    std::vector<Known> mObjects;
    std::vector<Container> mOpen;
};

}

bool isBinaryPropertyList(std::span<const std::byte> bytes)
{
    constexpr std::size_t kWithoutMinorVersion = kHeaderSize - 1;
    return bytes.size() >= kHeaderSize && std::memcmp(bytes.data(), kHeader, kWithoutMinorVersion) == 0;
}

NSId readBinaryPropertyList(std::span<const std::byte> bytes, const NSDecodingLimits& limits)
{
    return Reader(bytes, limits).read();
}

}
