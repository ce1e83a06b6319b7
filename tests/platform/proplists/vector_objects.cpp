#include "tests/platform/proplists/vector_objects.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "tests/source_folder.h"

#include <fstream>
#include <map>
#include <sstream>

namespace {

const vectors::Json& member(const vectors::Json& json, std::u16string_view key)
{
    for (const auto& member : json.members)
        if (member.key == key)
            return member.value;
    throw std::runtime_error("a description lacks a member");
}

std::string narrow(const std::u16string& text)
{
    return { text.begin(), text.end() };
}

NSId dataOfHex(const std::string& hex)
{
    std::string bytes;
    for (std::size_t at = 0; at < hex.size(); at += 2)
        bytes.push_back(static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16)));
    return NSData::dataWithBytes(bytes.data(), bytes.size());
}

}

NSId objectDescribedBy(const vectors::Json& json)
{
    const std::string type = narrow(member(json, u"t").text);
    if (type == "data")
        return dataOfHex(narrow(member(json, u"hex").text));
    const vectors::Json& value = member(json, u"v");
    if (type == "str")
        return value.text;
    if (type == "bool")
        return value.boolean;
    if (type == "int")
        return std::stoll(narrow(value.text));
    if (type == "uint")
        return std::stoull(narrow(value.text));
    if (type == "real")
        return std::stod(narrow(value.text));
    if (type == "real32")
        return std::stof(narrow(value.text));
    if (type == "date")
        return NSDate::dateWithTimeIntervalSinceReferenceDate(std::stod(narrow(value.text)));
    std::vector<NSId> items;
    auto table = NSMutableDictionary::dictionary();
    for (const vectors::Json& item : value.items) {
        if (type == "array")
            items.push_back(objectDescribedBy(item));
        else
            table->setObject(objectDescribedBy(item.items.at(1)), item.items.at(0).text);
    }
    return type == "array" ? NSId(NSArray::arrayWithObjects(std::move(items))) : table->copy();
}

std::string typesOf(const NSId& object)
{
    if (auto number = NSCast<NSNumber>(object))
        return number->isBool()
            ? "bool"
            : std::string(number->isFloatingPoint() ? "real " : "int ") + number->objCType();
    if (auto array = NSCast<NSArray>(object)) {
        std::string types = "[";
        for (const NSId& element : array)
            types += typesOf(element) + ", ";
        return types + "]";
    }
    if (auto dictionary = NSCast<NSDictionary>(object)) {
        std::map<std::string, std::string> sorted;
        for (const auto& [key, value] : dictionary)
            sorted[key->description()->utf8()] = typesOf(value);
        std::string types = "{";
        for (const auto& [key, type] : sorted)
            types.append(key).append(": ").append(type).append(", ");
        return types + "}";
    }
    return std::string(object->isa().name());
}

std::string contentOfVector(const std::string& name)
{
    std::ifstream file(inSourceFolder("tests/vectors/" + name), std::ios::binary);
    if (!file)
        throw std::runtime_error("no vector " + name);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}
