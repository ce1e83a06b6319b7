#include "platform/archiving/keyed_slots.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "platform/archiving/keyed_format.h"
#include "platform/proplists/binary_values.h"
#include "platform/proplists/property_list_uid.h"

namespace platform {
namespace {

constexpr KeyedSlots::Number kNoNumber = 0; // object 0 is the top, which nothing refers to

}

KeyedSlots::KeyedSlots()
{
    constexpr std::uint64_t kEntriesOfTheTop = 4;
    mLayout.addContainer(binary::kDictionary, kEntriesOfTheTop);
    newSlot(text(keyed::kNull));
}

KeyedSlots::Number KeyedSlots::text(std::u16string_view text)
{
    appendBinaryText(mLayout.valueBytes(), text);
    return mLayout.addAppendedValue();
}

KeyedSlots::Number KeyedSlots::integer(std::int64_t value)
{
    appendBinaryInteger(mLayout.valueBytes(), value);
    return mLayout.addAppendedValue();
}

/// By its bytes, not by its identity: nothing keeps the object until the archive is done.
KeyedSlots::Number KeyedSlots::value(const NSObject& value, PropertyListKind kind)
{
    appendBinaryValue(mLayout.valueBytes(), value, kind);
    return mLayout.addAppendedValue();
}

KeyedSlots::Number KeyedSlots::reference(Uid uid)
{
    if (uid >= mReferences.size())
        mReferences.resize(mSlots.size(), kNoNumber);
    if (mReferences[uid] == kNoNumber) {
        appendBinaryUid(mLayout.valueBytes(), uid);
        mReferences[uid] = mLayout.addAppendedValue();
    }
    return mReferences[uid];
}

KeyedSlots::Number KeyedSlots::array(std::span<const Number> elements)
{
    const Number array = mLayout.addContainer(binary::kArray, elements.size());
    std::copy(elements.begin(), elements.end(), mLayout.references(array).begin());
    return array;
}

KeyedSlots::Number KeyedSlots::dictionary(std::span<const Entry> entries)
{
    const Number dictionary = mLayout.addContainer(binary::kDictionary, entries.size());
    const auto references = mLayout.references(dictionary);
    for (std::size_t at = 0; at < entries.size(); ++at) {
        references[at] = entries[at].key;
        references[entries.size() + at] = entries[at].value;
    }
    return dictionary;
}

KeyedSlots::Uid KeyedSlots::newSlot(Number number)
{
    mSlots.push_back(number);
    return static_cast<Uid>(mSlots.size() - 1);
}

KeyedSlots::Uid KeyedSlots::slotOfValue(const NSObject& object, PropertyListKind kind)
{
    const Number number = value(object, kind);
    if (number >= mSlotsOfValues.size())
        mSlotsOfValues.resize(std::max<std::size_t>(number + 1, mSlotsOfValues.size() * 2));
    Uid& uid = mSlotsOfValues[number];
    if (uid == 0)
        uid = newSlot(number);
    return uid;
}

KeyedSlots::Uid KeyedSlots::openSlot(const NSId& object)
{
    const Uid uid = newSlot(kNoNumber);
    mIdentities.add(object, uid);
    return uid;
}

KeyedSlots::Uid KeyedSlots::slotOfClass(const NSClass& type)
{
    const auto [known, isNew] = mClasses.emplace(&type, 0);
    if (!isNew)
        return known->second;
    std::vector<Number> names;
    for (const NSClass* at = &type; at; at = at->superclass())
        names.push_back(text(NSRef<NSString>(at->name())->characters()));
    const Entry entries[] = {
        { text(keyed::kClassNameKey), names[0] },
        { text(keyed::kClassesKey), array(names) },
    };
    known->second = newSlot(dictionary(entries));
    return known->second;
}

NSRef<NSData> KeyedSlots::archive(std::span<const Entry> top)
{
    const Entry entries[] = {
        { text(keyed::kVersionKey), integer(keyed::kVersion) },
        { text(keyed::kArchiverKey), text(keyed::kArchiver) },
        { text(keyed::kTopKey), dictionary(top) },
        { text(keyed::kObjectsKey), array(mSlots) },
    };
    const auto references = mLayout.references(0);
    for (std::size_t at = 0; at < std::size(entries); ++at) {
        references[at] = entries[at].key;
        references[std::size(entries) + at] = entries[at].value;
    }
    return mLayout.laidOut();
}

}
