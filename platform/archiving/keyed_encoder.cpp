#include "platform/archiving/keyed_encoder.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDecodingLimits.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSSet.h"
#include "LUMPlatform/NSString.h"
#include "platform/archiving/collection_elements.h"
#include "platform/archiving/keyed_format.h"
#include "platform/archiving/nesting_depth.h"

#include <algorithm>

namespace platform {

void KeyedEncoder::setDelegate(const NSRef<NSKeyedArchiverDelegate>& delegate)
{
    mDelegate = delegate;
    mHasDelegate = delegate != nullptr;
}

void KeyedEncoder::requireUsable() const
{
    if (mIsFinished)
        throw NSException(NSInvalidArchiveOperationException, "the archive is finished");
    if (mHasFailed)
        throw NSException(
            NSInvalidArchiveOperationException, "the archive is incomplete since an exception before");
}

/// An archive that an exception went through holds half an object.
template<typename Encode> void KeyedEncoder::guarded(const Encode& encode)
{
    requireUsable();
    try {
        encode();
    } catch (...) {
        mHasFailed = true;
        throw;
    }
}

/// Keys that begin with "$" are the archive's own; those of callers get one more.
KeyedSlots::Number KeyedEncoder::keyNumber(const NSString* key)
{
    if (!key)
        return mSlots.text(NSRef<NSString>("$" + std::to_string(mCurrent.withoutKey++))->characters());
    if (key->length() > 0 && key->characters().front() == u'$')
        return mSlots.text(u"$" + std::u16string(key->characters()));
    return mSlots.text(key->characters());
}

void KeyedEncoder::add(Number key, Number value)
{
    if (key >= mIsKey.size())
        mIsKey.resize(std::max<std::size_t>(key + 1, 2 * mIsKey.size()));
    const bool isUsed = mIsKey[key]; // by any object; most keys of large ones are not
    mIsKey[key] = true;
    for (std::size_t at = mCurrent.firstEntry; isUsed && at < mEntries.size(); ++at)
        if (mEntries[at].key == key)
            throw NSException(NSInvalidArchiveOperationException, "a key is used twice by one object");
    mEntries.push_back({ key, value });
}

void KeyedEncoder::encodeObject(const NSId& object, const NSString* key)
{
    guarded([&] {
        const Number number = keyNumber(key);
        add(number, mSlots.reference(uidOfGraph(object)));
    });
}

void KeyedEncoder::encodeInteger(std::int64_t value, const NSString* key)
{
    guarded([&] {
        const Number number = keyNumber(key);
        add(number, mSlots.integer(value));
    });
}

void KeyedEncoder::encodeValue(const NSObject& value, PropertyListKind kind, const NSString* key)
{
    guarded([&] {
        const Number number = keyNumber(key);
        add(number, mSlots.value(value, kind));
    });
}

KeyedEncoder::Uid KeyedEncoder::uidOfGraph(const NSId& root)
{
    const std::size_t outer = mOpen.size();
    const Uid uid = begin(root);
    while (mOpen.size() > outer) {
        const std::size_t at = mOpen.size() - 1;
        const std::size_t next = mOpen[at].references.size();
        if (next < mOpen[at].elements.size()) {
            const NSId element = mOpen[at].elements[next];
            const Uid elementUid = begin(element); // which may open another
            mOpen[at].references.push_back(mSlots.reference(elementUid));
            continue;
        }
        const Open done = std::move(mOpen.back());
        mOpen.pop_back();
        finishCollection(done);
    }
    return uid;
}

KeyedEncoder::Uid KeyedEncoder::begin(const NSId& object)
{
    constexpr Uid kNullUid = 0;
    if (!object)
        return kNullUid;
    const auto delegate = mHasDelegate ? mDelegate.get() : nullptr;
    if (!delegate)
        return beginNew(object, codingOf(*object));

    const Uid known = mSlots.slotOf(*object);
    if (known != IdentityTable::kNone)
        return known;
    const NSId replacement = delegate->archiverWillEncodeObject(mArchiver, object);
    const Uid uid = replacement ? beginNew(replacement, codingOf(*replacement)) : kNullUid;
    if (mSlots.slotOf(*object) == IdentityTable::kNone)
        mSlots.addAlias(object, uid);
    return uid;
}

KeyedEncoder::Uid KeyedEncoder::beginNew(const NSId& object, const ClassCoding& coding)
{
    const auto slotOfValue = [&](PropertyListKind kind) {
        const Uid uid = mSlots.slotOfValue(*object, kind);
        tellEncoded(object);
        return uid;
    };
    switch (coding.kind) {
    case CodedKind::String:
        return slotOfValue(PropertyListKind::String);
    case CodedKind::Number:
        return slotOfValue(PropertyListKind::Number);
    case CodedKind::Data:
        return slotOfValue(PropertyListKind::Data);
    default:
        break;
    }
    const Uid known = mSlots.slotOf(*object);
    if (known != IdentityTable::kNone)
        return known;
    const Uid uid = mSlots.openSlot(object);
    if (coding.kind == CodedKind::Custom)
        encodeItself(uid, object, coding);
    else if (coding.kind == CodedKind::MutableString) {
        const KeyedSlots::Entry entry { mSlots.text(keyed::kStringKey),
            mSlots.value(*object, PropertyListKind::String) };
        fill(uid, *coding.type, { &entry, 1 });
        tellEncoded(object);
    } else
        mOpen.push_back({ uid, &coding, object, elementsOf(*object, coding.kind), {} });
    return uid;
}

const ClassCoding& KeyedEncoder::codingOf(const NSObject& object)
{
    const NSClass& type = object.isa();
    if (mLastCoding.first != &type)
        mLastCoding = { &type, &requiredClassCoding(object) };
    return *mLastCoding.second;
}

void KeyedEncoder::encodeItself(Uid uid, const NSId& object, const ClassCoding& coding)
{
    if (mDepth >= NSDecodingLimits().depth)
        throw NSException(NSInvalidArgumentException, "objects are nested too deep to be archived");
    const NestingDepth depth(mDepth);
    const std::size_t first = mEntries.size();
    const Current outer = std::exchange(mCurrent, { first });
    coding.functions.encode(*object, mArchiver);
    requireUsable(); // even if the object caught what was raised
    fill(uid, *coding.type,
        std::vector(mEntries.begin() + static_cast<std::ptrdiff_t>(first), mEntries.end()));
    mEntries.resize(first);
    mCurrent = outer;
    tellEncoded(object);
}

void KeyedEncoder::finishCollection(const Open& collection)
{
    const std::span<const Number> references = collection.references;
    const auto arrayOf = [&](std::span<const Number> part) { return mSlots.array(part); };
    if (isDictionary(collection.coding->kind)) {
        const std::size_t count = references.size() / 2;
        const KeyedSlots::Entry entries[] = {
            { mSlots.text(keyed::kKeysKey), arrayOf(references.first(count)) },
            { mSlots.text(keyed::kElementsKey), arrayOf(references.last(count)) },
        };
        fill(collection.uid, *collection.coding->type, entries);
    } else {
        const KeyedSlots::Entry entry { mSlots.text(keyed::kElementsKey), arrayOf(references) };
        fill(collection.uid, *collection.coding->type, { &entry, 1 });
    }
    tellEncoded(collection.object);
}

/// The record of a class follows the contents of its first object.
void KeyedEncoder::fill(Uid uid, const NSClass& type, std::span<const KeyedSlots::Entry> entries)
{
    std::vector<KeyedSlots::Entry> all(entries.begin(), entries.end());
    all.push_back({ mSlots.text(keyed::kClassKey), mSlots.reference(mSlots.slotOfClass(type)) });
    mSlots.fill(uid, mSlots.dictionary(all));
}

void KeyedEncoder::tellEncoded(const NSId& object)
{
    if (!mHasDelegate)
        return;
    if (const auto delegate = mDelegate.get())
        delegate->archiverDidEncodeObject(mArchiver, object);
}

NSRef<NSData> KeyedEncoder::finish()
{
    requireUsable();
    if (const auto delegate = mDelegate.get())
        delegate->archiverWillFinish(mArchiver);
    auto data = mSlots.archive(mEntries);
    mIsFinished = true;
    if (const auto delegate = mDelegate.get())
        delegate->archiverDidFinish(mArchiver);
    return data;
}

}
