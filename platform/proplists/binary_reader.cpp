#include "platform/proplists/binary_reader.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSString.h"
#include "platform/proplists/binary_objects.h"
#include "platform/proplists/property_list_fault.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace platform {
namespace {

/// Reads objects by number, each once, with the containers being read on a stack of its own.
///
/// Two sums keep hostile files small. All objects read lie in the file without overlapping, so their bytes
/// together are no more than the file's. And each object knows how many objects a walk through it meets, so
/// that a few shared containers cannot stand for billions.
class Reader {
public:
    Reader(std::span<const std::byte> bytes, const NSDecodingLimits& limits)
        : mObjects(bytes, limits)
        , mMostObjects(std::min(limits.objects, Known::kHeaviest))
        , mDepth(limits.depth)
        , mKnown(mObjects.count())
    {
    }

    NSId read()
    {
        enter(mObjects.top());
        while (!mOpen.empty()) {
            const Container& container = mOpen.back();
            const std::size_t next = mChildren.size() - container.firstChild;
            if (next == mObjects.referenceCount(container.object))
                leave();
            else
                enter(mObjects.reference(container.object, next));
        }
        return std::move(mChildren.front());
    }

private:
    /// What is known of an object: nothing, that it is being read, or itself and its weight.
    struct Known {
        static constexpr std::uint64_t kUnread = 0;
        static constexpr std::uint64_t kOpen = ~std::uint64_t { 0 };
        static constexpr std::uint64_t kHeaviest = kOpen - 1;

        NSObject* object = nullptr; ///< Kept by what holds it: a container, mChildren, or mReplaced.
        std::uint64_t weight = kUnread; ///< How many objects a walk through it meets, itself included.
    };
    /// An array or dictionary of which not all children are read. A dictionary's are its keys, then values.
    struct Container {
        std::uint64_t number;
        BinaryObjects::Object object;
        std::uint64_t weight;
        std::size_t firstChild; ///< In mChildren.
    };

    /// Hands an object to the innermost open container, or opens it first.
    void enter(std::uint64_t number)
    {
        if (number >= mKnown.size() || mKnown[number].weight == Known::kUnread) {
            const BinaryObjects::Object object = mObjects.object(number);
            mObjects.claim(object);
            if (object.isContainer())
                return open(number, object);
            NSId value = mObjects.value(object);
            mKnown[number] = { value.get(), 1 };
            return hand(std::move(value), 1);
        }
        if (mKnown[number].weight == Known::kOpen)
            throw PropertyListFault("object " + std::to_string(number) + " contains itself");
        hand(NSShare(mKnown[number].object), mKnown[number].weight);
    }

    void open(std::uint64_t number, const BinaryObjects::Object& object)
    {
        if (mOpen.size() >= mDepth)
            throw PropertyListFault("containers are nested more than " + std::to_string(mDepth)
                + " deep at byte " + std::to_string(object.begin));
        mKnown[number].weight = Known::kOpen;
        mOpen.push_back({ number, object, 1, mChildren.size() });
    }

    void hand(NSId object, std::uint64_t weight)
    {
        mChildren.push_back(std::move(object));
        if (mOpen.empty())
            return;
        std::uint64_t& sum = mOpen.back().weight;
        if (weight > mMostObjects || sum > mMostObjects - weight)
            throw PropertyListFault("there are more than " + std::to_string(mMostObjects) + " objects");
        sum += weight;
    }

    void leave()
    {
        const Container container = mOpen.back();
        mOpen.pop_back();
        const auto children = std::span(mChildren).subspan(container.firstChild);
        NSId object;
        if (container.object.type == binary::kDictionary)
            object = dictionaryOf(children);
        else
            object = NSArray::arrayWithObjects(
                { std::make_move_iterator(children.begin()), std::make_move_iterator(children.end()) });
        mChildren.resize(container.firstChild);
        mKnown[container.number] = { object.get(), container.weight };
        hand(std::move(object), container.weight);
    }

    NSRef<NSDictionary> dictionaryOf(std::span<const NSId> keysAndValues)
    {
        const std::size_t count = keysAndValues.size() / 2;
        const auto keys = keysAndValues.first(count);
        for (const NSId& key : keys)
            if (!NSDowncast<NSString>(key.get()))
                throw PropertyListFault("a key of a dictionary is no string");
        auto dictionary = NSDictionary::dictionaryWithObjectsCount(keysAndValues.last(count), keys);
        if (dictionary->count() != count) // others may still refer to what a repeated key replaced
            mReplaced.insert(mReplaced.end(), keysAndValues.begin(), keysAndValues.end());
        return dictionary;
    }

    BinaryObjects mObjects;
    const std::uint64_t mMostObjects;
    const NSUInteger mDepth;
    std::vector<Known> mKnown;
    std::vector<Container> mOpen;
    std::vector<NSId> mChildren; // those of all open containers that are read
    std::vector<NSId> mReplaced;
};

}

bool isBinaryPropertyList(std::span<const std::byte> bytes)
{
    constexpr std::size_t kWithoutMinorVersion = binary::kHeaderSize - 1;
    return bytes.size() >= binary::kHeaderSize
        && std::memcmp(bytes.data(), binary::kHeader, kWithoutMinorVersion) == 0;
}

NSId readBinaryPropertyList(std::span<const std::byte> bytes, const NSDecodingLimits& limits)
{
    return Reader(bytes, limits).read();
}

}
