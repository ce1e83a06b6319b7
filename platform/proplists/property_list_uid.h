#pragma once

#include "LUMPlatform/NSObject.h"

namespace platform {

/// The number of an object in a keyed archive, the one value of property lists that only archives hold.
///
/// In binary it has a type of its own, in XML it is a dictionary with an integer under "CF$UID". Immutable.
class PropertyListUid : public NSObject {
public:
    static const NSClass& classObject();

    static NSRef<PropertyListUid> withValue(std::uint32_t value);
    std::uint32_t value() const { return mValue; }

    bool isEqual(const NSId& other) const override; ///< The same number.
    NSUInteger hash() const override;
    NSRef<NSString> description() const override; ///< "UID 5"
    NSId copy() const override; ///< Itself.

protected:
    explicit PropertyListUid(std::uint32_t value) : mValue(value) { }
    ~PropertyListUid() override;

private:
    std::uint32_t mValue;
};

}
