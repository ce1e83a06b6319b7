#include "platform/proplists/property_list_builder.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSNumber.h"
#include "platform/proplists/property_list_fault.h"
#include "platform/proplists/property_list_uid.h"

#include <utility>

namespace platform {
namespace {

NSRef<NSString> stringOf(std::string_view utf8)
{
    auto string = NSString::stringWithUTF8String(utf8);
    if (!string)
        throw PropertyListFault("a text is not in UTF-8");
    return string;
}

}

void PropertyListBuilder::countOne()
{
    if (++mCount > mLimits.objects)
        throw PropertyListFault("there are more than " + std::to_string(mLimits.objects) + " objects");
}

bool PropertyListBuilder::wantsKey() const
{
    if (!isInDictionary())
        return false;
    const Container& dictionary = mOpen.back();
    return mKeys.size() - dictionary.firstKey == mValues.size() - dictionary.firstValue;
}

void PropertyListBuilder::beginArray()
{
    begin(false);
}

void PropertyListBuilder::beginDictionary()
{
    begin(true);
}

void PropertyListBuilder::begin(bool isDictionary)
{
    if (wantsKey())
        throw PropertyListFault("a value in a dictionary has no key");
    if (mOpen.size() >= mLimits.depth)
        throw PropertyListFault("containers are nested more than " + std::to_string(mLimits.depth) + " deep");
    countOne();
    mOpen.push_back({ isDictionary, mValues.size(), mKeys.size() });
}

void PropertyListBuilder::endContainer()
{
    const Container container = mOpen.back();
    const auto values = std::span(mValues).subspan(container.firstValue);
    const auto keys = std::span(mKeys).subspan(container.firstKey);
    NSId object;
    if (!container.isDictionary)
        object = NSArray::arrayWithObjects(
            { std::make_move_iterator(values.begin()), std::make_move_iterator(values.end()) });
    else if (keys.size() != values.size())
        throw PropertyListFault("a key in a dictionary has no value");
    else
        object = uidOrDictionary(values, keys);
    mValues.resize(container.firstValue);
    mKeys.resize(container.firstKey);
    mOpen.pop_back();
    place(std::move(object));
}

NSId PropertyListBuilder::uidOrDictionary(std::span<const NSId> values, std::span<const NSId> keys) const
{
    if (keys.size() == 1 && static_cast<NSString*>(keys[0].get())->characters() == u"CF$UID") {
        const auto* number = NSDowncast<NSNumber>(values[0].get());
        if (number && !number->isBool() && !number->isFloatingPoint()
            && std::in_range<std::uint32_t>(number->longLongValue()))
            return PropertyListUid::withValue(number->unsignedIntValue());
    }
    return NSDictionary::dictionaryWithObjectsCount(values, keys);
}

void PropertyListBuilder::addUtf8Key(std::string_view utf8)
{
    Known& known = mKnownKeys[std::hash<std::string_view> {}(utf8) % mKnownKeys.size()];
    if (!known.string || known.utf8 != utf8) {
        known.string = stringOf(utf8);
        known.utf8 = utf8;
    }
    addKey(known.string);
}

void PropertyListBuilder::addKey(NSRef<NSString> key)
{
    if (!wantsKey())
        throw PropertyListFault("a key stands where a value is wanted");
    countOne();
    mKeys.push_back(std::move(key));
}

void PropertyListBuilder::addUtf8String(std::string_view utf8)
{
    add(stringOf(utf8));
}

void PropertyListBuilder::addAsciiString(std::string_view ascii)
{
    add(NSString::stringWithLength(ascii.size(), [&](char16_t* characters) {
        for (std::size_t at = 0; at < ascii.size(); ++at)
            characters[at] = static_cast<unsigned char>(ascii[at]);
    }));
}

void PropertyListBuilder::add(NSId value)
{
    countOne();
    place(std::move(value));
}

void PropertyListBuilder::place(NSId object)
{
    if (wantsKey())
        throw PropertyListFault("a value in a dictionary has no key");
    if (!mOpen.empty())
        mValues.push_back(std::move(object));
    else if (mTop)
        throw PropertyListFault("there is more than one object");
    else
        mTop = std::move(object);
}

NSId PropertyListBuilder::top()
{
    if (!mTop)
        throw PropertyListFault("there is no object");
    return mTop;
}

}
