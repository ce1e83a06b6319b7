#include "platform/proplists/binary_writer.h"

#include "platform/proplists/binary_layout.h"
#include "platform/proplists/property_list_walk.h"

namespace platform {
namespace {

/// Adds the objects to the layout in the order in which a walk meets them.
class Writer {
public:
    NSRef<NSData> write(const NSId& propertyList)
    {
        PropertyListWalk(*this).through(propertyList);
        return mLayout.laidOut();
    }

    // What the walk calls.

    void value(const NSObject& value, PropertyListKind kind) { refer(mLayout.addValue(value, kind)); }
    void beginArray(std::size_t count) { begin(binary::kArray, count); }
    void beginDictionary(std::span<const SortedEntry> entries)
    {
        begin(binary::kDictionary, entries.size());
        for (const SortedEntry& entry : entries)
            refer(mLayout.addValue(*entry.key, PropertyListKind::String));
    }
    void key(const NSString&) { }
    void endArray() { mOpen.pop_back(); }
    void endDictionary() { mOpen.pop_back(); }

private:
    struct Container {
        std::uint32_t number;
        std::size_t next; // of its references to fill in
    };

    void begin(binary::Type type, std::uint64_t count)
    {
        refer(mLayout.nextNumber());
        mOpen.push_back({ mLayout.addContainer(type, count), 0 });
    }

    void refer(std::uint32_t number)
    {
        if (!mOpen.empty())
            mLayout.references(mOpen.back().number)[mOpen.back().next++] = number;
    }

    BinaryLayout mLayout;
    std::vector<Container> mOpen;
};

}

NSRef<NSData> writeBinaryPropertyList(const NSId& propertyList)
{
    return Writer().write(propertyList);
}

}
