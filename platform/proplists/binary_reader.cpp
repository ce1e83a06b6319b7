#include "platform/proplists/binary_reader.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSString.h"
#include "platform/proplists/binary_objects.h"
#include "platform/proplists/property_list_fault.h"

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
        : mObjects(bytes, limits), mLimits(limits), mKnown(mObjects.count())
    {
    }

    NSId read()
    {
        enter(mObjects.top());
        while (!mOpen.empty()) {
            const Container& container = mOpen.back();
            const std::size_t next = container.children.size();
            if (next == mObjects.referenceCount(container.object))
                leave();
            else
                enter(mObjects.reference(container.object, next));
        }
        return mKnown[mObjects.top()].object;
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
        BinaryObjects::Object object;
        std::uint64_t weight;
        std::vector<NSId> children;
    };

    /// Hands an object to the innermost open container, or opens it first.
    void enter(std::uint64_t number)
    {
        if (number >= mKnown.size() || mKnown[number].weight == Known::kUnread) {
            const BinaryObjects::Object object = mObjects.object(number);
            mObjects.claim(object);
            if (object.isContainer())
                return open(number, object);
            mKnown[number] = { mObjects.value(object), 1 };
        }
        if (mKnown[number].weight == Known::kOpen)
            throw PropertyListFault("object " + std::to_string(number) + " contains itself");
        hand(mKnown[number]);
    }

    void open(std::uint64_t number, const BinaryObjects::Object& object)
    {
        if (mOpen.size() >= mLimits.depth)
            throw PropertyListFault("containers are nested more than " + std::to_string(mLimits.depth)
                + " deep at byte " + std::to_string(object.begin));
        mKnown[number].weight = Known::kOpen;
        mOpen.push_back({ number, object, 1, {} });
        mOpen.back().children.reserve(mObjects.referenceCount(object));
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
        Known& known = mKnown[container.number];
        known.weight = container.weight;
        if (container.object.type == binary::kDictionary)
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

    BinaryObjects mObjects;
    const NSDecodingLimits mLimits;
    std::vector<Known> mKnown;
    std::vector<Container> mOpen;
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
