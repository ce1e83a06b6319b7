// libplist, which shares nothing with ours, reads what we write to the same values, and we what it writes.
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "platform/proplists/property_list_uid.h"
#include "tests/fixture.h"
#include "tests/platform/proplists/property_list_generator.h"

#include <cmath>
#include <memory>
#include <plist/plist.h>
#include <rapidcheck/gtest.h>

namespace {

struct Free {
    void operator()(void* node) const { plist_free(node); }
};
using Tree = std::unique_ptr<void, Free>;

enum class Form { Binary, Xml };

/// What libplist can hold: its whole seconds have 32 bits, and its integers do not tell the sign of 64.
NSId fitting(const NSId& object)
{
    constexpr double kFarthest = 2e9;
    if (auto number = NSCast<NSNumber>(object); number && *number->objCType() == 'Q')
        return number->longLongValue() & std::numeric_limits<long long>::max();
    if (auto date = NSCast<NSDate>(object))
        return NSDate::dateWithTimeIntervalSinceReferenceDate(
            std::fmod(date->timeIntervalSinceReferenceDate(), kFarthest));
    if (auto array = NSCast<NSArray>(object)) {
        std::vector<NSId> items;
        for (const NSId& item : array)
            items.push_back(fitting(item));
        return NSArray::arrayWithObjects(std::move(items));
    }
    if (auto dictionary = NSCast<NSDictionary>(object)) {
        auto result = NSMutableDictionary::dictionary();
        for (const auto& [key, value] : dictionary)
            result->setObject(fitting(value), key);
        return result->copy();
    }
    return object;
}

std::string text(void (*get)(plist_t, char**), plist_t node)
{
    char* characters = nullptr;
    get(node, &characters);
    const std::unique_ptr<char, decltype(&std::free)> owner(characters, &std::free);
    return characters ? characters : "no text";
}

NSId oursOf(plist_t node);

NSId collectionOf(plist_t node)
{
    if (plist_get_node_type(node) == PLIST_ARRAY) {
        std::vector<NSId> items;
        for (std::uint32_t at = 0; at < plist_array_get_size(node); ++at)
            items.push_back(oursOf(plist_array_get_item(node, at)));
        return NSArray::arrayWithObjects(std::move(items));
    }
    auto dictionary = NSMutableDictionary::dictionary();
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    const std::unique_ptr<void, decltype(&std::free)> owner(iterator, &std::free);
    for (;;) {
        char* key = nullptr;
        plist_t value = nullptr;
        plist_dict_next_item(node, iterator, &key, &value);
        const std::unique_ptr<char, decltype(&std::free)> keyOwner(key, &std::free);
        if (!value)
            return dictionary->copy();
        dictionary->setObject(oursOf(value), NSRef<NSString>(key));
    }
}

/// What a tree of libplist holds, as objects of ours.
NSId oursOf(plist_t node)
{
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t truth = 0;
        plist_get_bool_val(node, &truth);
        return truth != 0;
    }
    case PLIST_UINT: {
        std::uint64_t bits = 0;
        plist_get_uint_val(node, &bits);
        return static_cast<long long>(bits);
    }
    case PLIST_REAL: {
        double real = 0;
        plist_get_real_val(node, &real);
        return real;
    }
    case PLIST_STRING:
        return text(&plist_get_string_val, node);
    case PLIST_DATE: {
        std::int32_t seconds = 0;
        std::int32_t microseconds = 0;
        plist_get_date_val(node, &seconds, &microseconds);
        return NSDate::dateWithTimeIntervalSinceReferenceDate(seconds + microseconds / 1e6);
    }
    case PLIST_DATA: {
        std::uint64_t length = 0;
        const char* bytes = plist_get_data_ptr(node, &length);
        return NSData::dataWithBytes(bytes, length);
    }
    case PLIST_UID: {
        std::uint64_t value = 0;
        plist_get_uid_val(node, &value);
        return platform::PropertyListUid::withValue(static_cast<std::uint32_t>(value));
    }
    case PLIST_ARRAY:
    case PLIST_DICT:
        return collectionOf(node);
    default:
        return "a node of another type";
    }
}

/// The same values as a tree of libplist.
plist_t theirsOf(const NSId& object)
{
    if (auto number = NSCast<NSNumber>(object)) {
        if (number->isBool())
            return plist_new_bool(number->boolValue());
        return number->isFloatingPoint() ? plist_new_real(number->doubleValue())
                                         : plist_new_uint(number->unsignedLongLongValue());
    }
    if (auto string = NSCast<NSString>(object))
        return plist_new_string(string->utf8().c_str());
    if (auto date = NSCast<NSDate>(object))
        return plist_new_date(static_cast<std::int32_t>(date->timeIntervalSinceReferenceDate()), 0);
    if (auto data = NSCast<NSData>(object))
        return plist_new_data(reinterpret_cast<const char*>(data->bytes().data()), data->length());
    if (auto array = NSCast<NSArray>(object)) {
        plist_t node = plist_new_array();
        for (const NSId& item : array)
            plist_array_append_item(node, theirsOf(item));
        return node;
    }
    plist_t node = plist_new_dict();
    for (const auto& [key, value] : NSCast<NSDictionary>(object))
        plist_dict_set_item(node, key->description()->utf8().c_str(), theirsOf(value));
    return node;
}

NSRef<NSData> writtenByUs(const NSId& object, Form form)
{
    return NSPropertyListSerialization::dataWithPropertyList(
        object, form == Form::Binary ? NSPropertyListBinaryFormat_v1_0 : NSPropertyListXMLFormat_v1_0);
}

NSId readByThem(const NSRef<NSData>& data, Form form)
{
    plist_t node = nullptr;
    const auto* bytes = reinterpret_cast<const char*>(data->bytes().data());
    const auto length = static_cast<std::uint32_t>(data->length());
    form == Form::Binary ? plist_from_bin(bytes, length, &node) : plist_from_xml(bytes, length, &node);
    const Tree tree(node);
    return node ? oursOf(node) : nullptr;
}

NSRef<NSData> writtenByThem(const NSId& object, Form form)
{
    const Tree tree(theirsOf(object));
    char* bytes = nullptr;
    std::uint32_t length = 0;
    form == Form::Binary ? plist_to_bin(tree.get(), &bytes, &length)
                         : plist_to_xml(tree.get(), &bytes, &length);
    const std::unique_ptr<char, decltype(&std::free)> owner(bytes, &std::free);
    return NSData::dataWithBytes(bytes, length);
}

/// A dictionary, as libplist writes no others in XML.
NSId graph()
{
    return fitting(NSDictionary::of({ { "graph", *propertyLists(3, true) } }));
}

RC_GTEST_PROP(Libplist, ReadsOurBinaryToTheSameValues, ())
{
    const NSId object = graph();
    const NSId read = readByThem(writtenByUs(object, Form::Binary), Form::Binary);
    RC_ASSERT(NSEqual(read, object));
}

RC_GTEST_PROP(Libplist, ReadsOurXmlToTheSameValues, ())
{
    const NSId object = graph();
    const NSId read = readByThem(writtenByUs(object, Form::Xml), Form::Xml);
    RC_ASSERT(NSEqual(read, object));
}

RC_GTEST_PROP(Libplist, WritesBinaryThatWeReadToTheSameValues, ())
{
    const NSId object = graph();
    const NSId read = NSPropertyListSerialization::propertyListWithData(writtenByThem(object, Form::Binary));
    RC_ASSERT(NSEqual(read, object));
}

RC_GTEST_PROP(Libplist, WritesXmlThatWeReadToTheSameValues, ())
{
    const NSId object = graph();
    const NSId read = NSPropertyListSerialization::propertyListWithData(writtenByThem(object, Form::Xml));
    RC_ASSERT(NSEqual(read, object));
}

class LibplistTest : public ObjectTest { };

TEST_F(LibplistTest, ReadsOurReferencesOfArchives)
{
    for (std::uint32_t value : { 1U, 255U, 256U, 65536U }) {
        const NSId object = NSArray::of(platform::PropertyListUid::withValue(value));
        EXPECT_TRUE(NSEqual(readByThem(writtenByUs(object, Form::Binary), Form::Binary), object)) << value;
    }
}

}
