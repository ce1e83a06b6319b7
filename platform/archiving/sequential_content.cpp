#include "platform/archiving/sequential_content.h"

#include "LUMPlatform/NSMutableString.h"
#include "LUMPlatform/NSNumber.h"
#include "platform/archiving/collection_filling.h"
#include "platform/archiving/sequential_values.h"

namespace platform {
namespace {

template<typename Count> void encodeCount(NSCoder& coder, NSUInteger count)
{
    if (!std::in_range<Count>(count))
        throw NSException(NSInvalidArgumentException, "a collection is too large to be archived");
    coder.encodeValuesOfObjCTypes(static_cast<Count>(count));
}

template<typename Count> std::vector<NSId> decodeObjects(NSCoder& coder, SequentialReader& reader)
{
    Count count = 0;
    coder.decodeValuesOfObjCTypes(count);
    if (!std::in_range<std::uint32_t>(count) || static_cast<std::size_t>(count) > reader.bytesLeft())
        reader.fault("a collection is larger than the archive");
    std::vector<NSId> objects;
    for (Count at = 0; at < count; ++at) {
        objects.push_back(coder.decodeObject());
        if (!objects.back())
            reader.fault("a collection holds null");
    }
    return objects;
}

template<typename T> NSId decodeArray(NSCoder& coder, SequentialReader& reader)
{
    auto array = NSMake<T>();
    coder.announce(array, emptyCollection);
    ArrayFilling::fill(*array, decodeObjects<int>(coder, reader));
    return array;
}

template<typename T> NSId decodeSet(NSCoder& coder, SequentialReader& reader)
{
    auto set = NSMake<T>();
    coder.announce(set, emptyCollection);
    SetFilling::fill(*set, decodeObjects<unsigned>(coder, reader));
    return set;
}

template<typename T> NSId decodeDictionary(NSCoder& coder, SequentialReader& reader)
{
    auto dictionary = NSMake<T>();
    coder.announce(dictionary, emptyCollection);
    int count = 0;
    coder.decodeValuesOfObjCTypes(count);
    if (count < 0 || static_cast<std::size_t>(count) > reader.bytesLeft() / 2)
        reader.fault("a dictionary is larger than the archive");
    std::vector<NSId> keys;
    std::vector<NSId> objects;
    for (int at = 0; at < count; ++at) {
        keys.push_back(coder.decodeObject());
        objects.push_back(coder.decodeObject());
        if (!keys.back() || !objects.back())
            reader.fault("a dictionary holds null");
    }
    DictionaryFilling::fill(*dictionary, keys, objects);
    return dictionary;
}

template<typename T> const T& as(const NSObject& object)
{
    return static_cast<const T&>(object);
}

}

void encodeSequentially(NSCoder& coder, SequentialWriter& writer, CodedKind kind, const NSObject& object)
{
    switch (kind) {
    case CodedKind::String:
    case CodedKind::MutableString:
        writeString(writer, as<NSString>(object));
        break;
    case CodedKind::Number:
        writeNumber(writer, as<NSNumber>(object));
        break;
    case CodedKind::Data:
        writeBlock(writer, as<NSData>(object).bytes().data(), as<NSData>(object).length());
        break;
    case CodedKind::Array:
    case CodedKind::MutableArray:
        encodeCount<int>(coder, as<NSArray>(object).count());
        for (const NSId& element : as<NSArray>(object))
            coder.encodeObject(element);
        break;
    case CodedKind::Dictionary:
    case CodedKind::MutableDictionary:
        encodeCount<int>(coder, as<NSDictionary>(object).count());
        for (const auto& [key, value] : as<NSDictionary>(object)) {
            coder.encodeObject(key);
            coder.encodeObject(value);
        }
        break;
    case CodedKind::Set:
    case CodedKind::MutableSet:
        encodeCount<unsigned>(coder, as<NSSet>(object).count());
        for (const NSId& element : as<NSSet>(object))
            coder.encodeObject(element);
        break;
    case CodedKind::Custom:
        break;
    }
}

NSId decodeSequentially(NSCoder& coder, SequentialReader& reader, CodedKind kind)
{
    switch (kind) {
    case CodedKind::String:
        return readString(reader);
    case CodedKind::MutableString:
        return NSMutableString::stringWithString(readString(reader));
    case CodedKind::Number:
        return readNumber(reader);
    case CodedKind::Data: {
        const auto bytes = readBlock(reader);
        return NSData::dataWithBytes(bytes.data(), bytes.size());
    }
    case CodedKind::Array:
        return decodeArray<NSArray>(coder, reader);
    case CodedKind::MutableArray:
        return decodeArray<NSMutableArray>(coder, reader);
    case CodedKind::Dictionary:
        return decodeDictionary<NSDictionary>(coder, reader);
    case CodedKind::MutableDictionary:
        return decodeDictionary<NSMutableDictionary>(coder, reader);
    case CodedKind::Set:
        return decodeSet<NSSet>(coder, reader);
    case CodedKind::MutableSet:
        return decodeSet<NSMutableSet>(coder, reader);
    case CodedKind::Custom:
        break;
    }
    return nullptr;
}

}
