#include "platform/archiving/keyed_decoder.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSMutableString.h"
#include "platform/archiving/collection_elements.h"
#include "platform/archiving/collection_filling.h"
#include "platform/archiving/keyed_format.h"
#include "platform/proplists/property_list_fault.h"

namespace platform {
namespace {

/// Equal texts and data stand in an archive once, and each object that takes one may copy it. No honest
/// archive shares this much by that, whose every object has some bytes of its own, and it is not too much for
/// a hostile one.
std::uint64_t mostTakenFrom(std::size_t archiveSize)
{
    constexpr std::uint64_t kTimes = 16;
    constexpr std::uint64_t kBesides = std::uint64_t { 1 } << 28;
    return archiveSize * kTimes + kBesides;
}

constexpr std::uint64_t kTopNumber = ~std::uint64_t { 0 }; // the top decodes itself, but is no object

NSId newCollection(CodedKind kind)
{
    switch (kind) {
    case CodedKind::Array:
        return NSMake<NSArray>();
    case CodedKind::MutableArray:
        return NSMake<NSMutableArray>();
    case CodedKind::Dictionary:
        return NSMake<NSDictionary>();
    case CodedKind::MutableDictionary:
        return NSMake<NSMutableDictionary>();
    case CodedKind::Set:
        return NSMake<NSSet>();
    default:
        return NSMake<NSMutableSet>();
    }
}

}

KeyedDecoder::KeyedDecoder(std::unique_ptr<KeyedArchive> archive, const NSDecodingLimits& limits)
    : mArchive(std::move(archive))
    , mObjects(mArchive->objects())
    , mLimits(limits)
    , mKnown(mObjects.count())
    , mCurrent { mArchive->top(), kTopNumber }
    , mTakeable(mostTakenFrom(mArchive->size()))
{
}

void KeyedDecoder::setDelegate(const NSRef<NSKeyedUnarchiverDelegate>& delegate)
{
    mDelegate = delegate;
    mHasDelegate = delegate != nullptr;
}

template<typename Decode> auto KeyedDecoder::guarded(const Decode& decode)
{
    if (mIsFinished)
        throw NSException(NSInvalidUnarchiveOperationException, "the unarchiver has finished");
    return mCalls.serve([&] {
        try {
            return decode();
        } catch (const PropertyListFault& fault) {
            throw NSException(NSInvalidUnarchiveOperationException, "the archive is broken: " + fault.text);
        }
    });
}

std::optional<KeyedDecoder::Object> KeyedDecoder::value(const NSString* key)
{
    std::u16string escaped;
    std::u16string_view name;
    if (!key) {
        escaped = NSRef<NSString>("$" + std::to_string(mCurrent.withoutKey++))->characters();
        name = escaped;
    } else if (key->length() > 0 && key->characters().front() == u'$') {
        escaped = u"$" + std::u16string(key->characters());
        name = escaped;
    } else
        name = key->characters();
    const auto number = mArchive->find(mCurrent.dictionary, name, mCurrent.cursor);
    if (!number)
        return std::nullopt;
    return mObjects.object(*number);
}

void KeyedDecoder::wrongType(const NSString* key)
{
    throw NSException(NSInvalidUnarchiveOperationException,
        "the archive holds a value of another type under the key "
            + (key ? "\"" + key->utf8() + "\"" : "of a value without one"));
}

bool KeyedDecoder::contains(const NSString* key)
{
    return guarded([&] {
        const std::uint64_t cursor = mCurrent.cursor;
        const bool isThere = value(key).has_value();
        mCurrent.cursor = cursor;
        return isThere;
    });
}

bool KeyedDecoder::truth(const NSString* key)
{
    return guarded([&] {
        const auto found = value(key);
        if (found && found->type != binary::kSingle)
            wrongType(key);
        return found && mObjects.truth(*found);
    });
}

Whole KeyedDecoder::integer(const NSString* key)
{
    return guarded([&] {
        const auto found = value(key);
        if (!found)
            return Whole { 0 };
        if (found->type != binary::kInteger)
            wrongType(key);
        const auto whole = mObjects.integer(*found);
        return Whole { static_cast<std::int64_t>(whole.bits), whole.isUnsigned };
    });
}

double KeyedDecoder::real(const NSString* key)
{
    return guarded([&] {
        const auto found = value(key);
        if (found && found->type != binary::kReal)
            wrongType(key);
        return found ? mObjects.real(*found) : 0.0;
    });
}

std::span<const std::byte> KeyedDecoder::bytes(const NSString* key)
{
    return guarded([&] {
        const auto found = value(key);
        if (found && found->type != binary::kData)
            wrongType(key);
        if (!found)
            return std::span<const std::byte>();
        take(*found);
        return mObjects.bytes(*found);
    });
}

NSId KeyedDecoder::object(const NSString* key)
{
    return guarded([&] {
        const auto found = value(key);
        if (found && found->type != binary::kUid)
            wrongType(key);
        return found ? objectOf(*found) : nullptr;
    });
}

void KeyedDecoder::announce(const NSId& object, NSCoder::Undo undo)
{
    if (mDepth == 0 || !object)
        return;
    mKnown[mCurrent.number].object = object;
    mCalls.add(object, undo);
}

void KeyedDecoder::finish()
{
    if (mIsFinished)
        return;
    if (const auto delegate = mDelegate.get())
        delegate->unarchiverWillFinish(*mUnarchiver);
    mIsFinished = true;
    if (const auto delegate = mDelegate.get())
        delegate->unarchiverDidFinish(*mUnarchiver);
}

/// The object in the slot that a UID names, with everything in it.
NSId KeyedDecoder::objectOf(const Object& reference)
{
    const std::uint32_t uid = mObjects.uid(reference);
    if (uid == 0)
        return nullptr;
    const std::uint64_t number = mArchive->slot(uid);
    const std::size_t outer = mOpen.size();
    begin(number);
    while (mOpen.size() > outer) {
        Open& collection = mOpen.back();
        if (collection.made.size() < collection.keys.count + collection.elements.count)
            addElement(collection); // or begins it, which may open another
        else {
            Open done = std::move(collection);
            mOpen.pop_back();
            finishCollection(std::move(done));
        }
    }
    if (mDepth > 0)
        take(mObjects.object(number));
    return mKnown[number].object;
}

/// Without this a short file could stand for a very long one.
void KeyedDecoder::take(const Object& content)
{
    if (content.type != binary::kData && content.type != binary::kAscii && content.type != binary::kUtf16)
        return;
    if (content.size > mTakeable)
        throw PropertyListFault("its objects take more bytes than it can honestly share");
    mTakeable -= content.size;
}

void KeyedDecoder::addElement(Open& collection)
{
    const std::uint64_t at = collection.made.size();
    const bool isKey = at < collection.keys.count;
    const auto reference =
        mObjects.object(isKey ? mObjects.reference(collection.keys, at)
                              : mObjects.reference(collection.elements, at - collection.keys.count));
    const std::uint32_t uid = reference.type == binary::kUid ? mObjects.uid(reference) : 0;
    if (uid == 0)
        throw PropertyListFault("a collection holds what is no object");
    const std::uint64_t number = mArchive->slot(uid);
    const std::size_t depth = mOpen.size();
    if (number >= mKnown.size() || (mKnown[number].state != Known::Made && !mKnown[number].object)) {
        begin(number);
        if (mOpen.size() > depth)
            return; // it is a collection itself, to be filled first
    }
    const NSId& element = mKnown[number].object;
    if (!element)
        throw PropertyListFault("a collection holds null");
    mOpen.back().made.push_back(element);
}

void KeyedDecoder::begin(std::uint64_t number)
{
    const Object object = mObjects.object(number);
    Known& known = mKnown[number];
    if (known.state == Known::Made)
        return;
    if (known.state == Known::Making) {
        if (!known.object)
            throw NSException(NSInvalidUnarchiveOperationException,
                "an object of the archive is needed while it is being made (NSCoder::announceObject)");
        return;
    }
    mObjects.claim(object);
    known.state = Known::Making;
    switch (object.type) {
    case binary::kDictionary:
        return beginObject(number, object);
    case binary::kArray:
    case binary::kUid:
        throw PropertyListFault("a slot holds what is no object");
    default:
        return made(number, mObjects.value(object));
    }
}

void KeyedDecoder::beginObject(std::uint64_t number, const Object& dictionary)
{
    const auto reference = mArchive->find(dictionary, keyed::kClassKey);
    if (!reference)
        throw PropertyListFault("an object has no class");
    const Object uid = mObjects.object(*reference);
    if (uid.type != binary::kUid)
        throw PropertyListFault("an object has no class");
    const ClassCoding& coding = mClasses.codingOfRecord(
        mArchive->slot(mObjects.uid(uid)), *mArchive, *mUnarchiver, mHasDelegate ? mDelegate.get() : nullptr);
    switch (coding.kind) {
    case CodedKind::Custom:
        return decodeItself(number, dictionary, coding);
    case CodedKind::String:
    case CodedKind::MutableString:
    case CodedKind::Data:
        return made(number, textOrData(dictionary, coding.kind));
    case CodedKind::Number:
        throw PropertyListFault("a number stands in a dictionary");
    default:
        return beginCollection(number, dictionary, coding.kind);
    }
}

void KeyedDecoder::decodeItself(std::uint64_t number, const Object& dictionary, const ClassCoding& coding)
{
    if (mDepth >= mLimits.depth)
        throw PropertyListFault("objects are nested more than " + std::to_string(mLimits.depth) + " deep");
    const NestingDepth depth(mDepth);
    const Current outer = std::exchange(mCurrent, { dictionary, number });
    const NSId object = coding.functions.make(*mUnarchiver);
    if (mCalls.hasFailed())
        throw PropertyListFault("an object was made without what it could not read");
    mCurrent = outer;
    made(number, object);
}

void KeyedDecoder::beginCollection(std::uint64_t number, const Object& dictionary, CodedKind kind)
{
    Open collection { number, kind, {}, entry(dictionary, keyed::kElementsKey, binary::kArray), {} };
    mObjects.claim(collection.elements);
    if (isDictionary(kind)) {
        collection.keys = entry(dictionary, keyed::kKeysKey, binary::kArray);
        mObjects.claim(collection.keys);
        if (collection.keys.count != collection.elements.count)
            throw PropertyListFault("a dictionary has not as many keys as values");
    }
    mKnown[number].object = newCollection(kind);
    mCalls.add(mKnown[number].object, emptyCollection);
    collection.made.reserve(collection.keys.count + collection.elements.count);
    mOpen.push_back(std::move(collection));
}

void KeyedDecoder::finishCollection(Open collection)
{
    const NSId object = mKnown[collection.number].object;
    const std::span<const NSId> elements = collection.made;
    if (isDictionary(collection.kind))
        DictionaryFilling::fill(static_cast<NSDictionary&>(*object), elements.first(collection.keys.count),
            elements.subspan(collection.keys.count));
    else if (isSet(collection.kind))
        SetFilling::fill(static_cast<NSSet&>(*object), elements);
    else
        ArrayFilling::fill(static_cast<NSArray&>(*object), std::move(collection.made));
    made(collection.number, object);
}

KeyedDecoder::Object KeyedDecoder::entry(const Object& dictionary, std::u16string_view key, binary::Type type)
{
    const auto number = mArchive->find(dictionary, key);
    if (!number)
        throw PropertyListFault("an object lacks its contents");
    const Object found = mObjects.object(*number);
    if (found.type != type)
        throw PropertyListFault("the contents of an object are of another type");
    return found;
}

/// The text or bytes stand in the dictionary itself, or plainly in a slot.
NSId KeyedDecoder::textOrData(const Object& dictionary, CodedKind kind)
{
    auto number = mArchive->find(dictionary, kind == CodedKind::Data ? keyed::kDataKey : keyed::kStringKey);
    if (!number)
        throw PropertyListFault("an object lacks its contents");
    Object content = mObjects.object(*number);
    if (content.type == binary::kUid) {
        number = mArchive->slot(mObjects.uid(content));
        content = mObjects.object(*number);
    }
    take(content);
    if (content.type == binary::kData && kind == CodedKind::Data)
        return valueAt(*number)->copy();
    if ((content.type == binary::kAscii || content.type == binary::kUtf16) && kind != CodedKind::Data)
        return kind == CodedKind::String ? valueAt(*number)->copy() : valueAt(*number)->mutableCopy();
    throw PropertyListFault("the contents of an object are of another type");
}

NSId KeyedDecoder::valueAt(std::uint64_t number)
{
    begin(number);
    return mKnown[number].object;
}

void KeyedDecoder::made(std::uint64_t number, const NSId& object)
{
    NSId used = object;
    if (mHasDelegate && object)
        if (const auto delegate = mDelegate.get())
            used = delegate->unarchiverDidDecodeObject(*mUnarchiver, object);
    mKnown[number] = { used, Known::Made };
}

}
