#pragma once

#include "LUMPlatform/NSDecodingLimits.h"
#include "LUMPlatform/NSString.h"

#include <array>
#include <vector>

namespace platform {

/// Puts a property list together from what a reader of text meets, in the order of the text.
///
/// Each function throws PropertyListFault where the object has no place: a value without a key in a
/// dictionary, a key outside, a second object at the top, or more than the limits allow.
class PropertyListBuilder {
public:
    explicit PropertyListBuilder(const NSDecodingLimits& limits) : mLimits(limits) { }

    void beginArray();
    void beginDictionary();
    /// Ends the innermost container; a dictionary that is the XML form of a PropertyListUid becomes one.
    void endContainer();
    bool isInContainer() const { return !mOpen.empty(); }
    bool isInDictionary() const { return isInContainer() && mOpen.back().isDictionary; }

    /// A dictionary's next key, in UTF-8.
    void addUtf8Key(std::string_view utf8);
    void addKey(NSRef<NSString> key);
    void addUtf8String(std::string_view utf8);
    /// One that is known to be ASCII.
    void addAsciiString(std::string_view ascii);
    void add(NSId value);

    /// What was built. Throws when nothing was, or a container is still open.
    NSId top();

private:
    struct Container {
        bool isDictionary;
        std::size_t firstValue; // in mValues
        std::size_t firstKey; // in mKeys
    };
    /// Texts met before, so that the keys of a hundred thousand equal dictionaries are few objects.
    struct Known {
        std::string utf8;
        NSRef<NSString> string;
    };

    void begin(bool isDictionary);
    void place(NSId object);
    void countOne();
    bool wantsKey() const;
    NSId uidOrDictionary(std::span<const NSId> values, std::span<const NSId> keys) const;

    NSDecodingLimits mLimits;
    std::size_t mCount = 0;
    std::vector<Container> mOpen;
    std::vector<NSId> mValues; // of all open containers
    std::vector<NSId> mKeys; // of all open dictionaries
    NSId mTop;
    std::array<Known, 256> mKnownKeys;
};

}
