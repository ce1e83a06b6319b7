#pragma once

#include "LUMPlatform/NSClass.h"
#include "platform/archiving/identity_table.h"
#include "platform/proplists/binary_layout.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform {

/// The objects of a keyed archive while they are gathered: each in a slot, whose number is its UID. What
/// answers a number of the layout may stand in a dictionary; a UID is not one, reference() makes one of it.
class KeyedSlots {
public:
    using Uid = std::uint32_t;
    using Number = std::uint32_t;
    struct Entry {
        Number key;
        Number value;
    };

    KeyedSlots();

    Number text(std::u16string_view text);
    Number integer(std::int64_t value);
    Number value(const NSObject& value, PropertyListKind kind);
    Number reference(Uid uid);
    Number array(std::span<const Number> elements);
    Number dictionary(std::span<const Entry> entries);

    /// The slot of a value that needs no class: one for all that are equal.
    Uid slotOfValue(const NSObject& value, PropertyListKind kind);
    /// The slot of an object; IdentityTable::kNone when it has none yet.
    Uid slotOf(const NSObject& object) const { return mIdentities.find(object); }
    /// A new slot for an object, to be filled later.
    Uid openSlot(const NSId& object);
    /// Another way to an object that has a slot.
    void addAlias(const NSId& object, Uid uid) { mIdentities.add(object, uid); }
    void fill(Uid uid, Number number) { mSlots[uid] = number; }
    /// The slot of the record of a class.
    Uid slotOfClass(const NSClass& type);

    /// The archive, with these entries as its top. Null when there is not enough memory for it.
    NSRef<NSData> archive(std::span<const Entry> top);

private:
    Uid newSlot(Number number);

    BinaryLayout mLayout;
    std::vector<Number> mSlots;
    std::vector<Number> mReferences; // of each UID, as far as it has one
    std::vector<Uid> mSlotsOfValues; // by the number of the value; 0 for none
    IdentityTable mIdentities;
    std::unordered_map<const NSClass*, Uid> mClasses;
};

}
