#pragma once

#include "LUMPlatform/NSDecodingLimits.h"
#include "LUMPlatform/NSObject.h"
#include "LUMPlatform/NSStringConstant.h"

class NSData;
class NSError;

/// The stored forms of property lists.
enum NSPropertyListFormat : NSUInteger {
    NSPropertyListOpenStepFormat = 1, ///< The old text form: `{ key = value; }`. Read only.
    NSPropertyListXMLFormat_v1_0 = 100,
    NSPropertyListBinaryFormat_v1_0 = 200,
};

/// What a reader makes. There is one choice: immutable containers and values.
enum NSPropertyListMutabilityOptions : NSUInteger {
    NSPropertyListImmutable = 0,
};

/// The domain of the errors below.
extern NS_EXPORT const NSStringConstant NSCocoaErrorDomain;
/// The bytes are no property list, or exceed the limits; the description tells what is wrong, and where.
inline constexpr NSInteger NSPropertyListReadCorruptError = 3840;
/// The object is no property list, or the format cannot be written.
inline constexpr NSInteger NSPropertyListWriteInvalidError = 3852;

/// Property lists from and to bytes. A property list is a dictionary with strings as keys, an array, a
/// string, a number, a date or data, and so on inside.
///
/// Errors are in NSCocoaErrorDomain, with a sentence under NSLocalizedDescriptionKey. Nothing here recurses
/// on the depth of its input, and reading takes time and memory linear in the number of bytes. Threads: any,
/// as long as nobody changes what is being written.
///
///     auto data = NSPropertyListSerialization::dataWithPropertyList(
///         settings, NSPropertyListBinaryFormat_v1_0, 0, &error);
///     auto again = NSPropertyListSerialization::propertyListWithData(data);
class NS_EXPORT NSPropertyListSerialization {
public:
    NSPropertyListSerialization() = delete;

    /// The bytes of a property list. Null with an error, code 3852, for null, for anything that is none, for
    /// containers that hold themselves or are more than 1,000 deep, and for a format that cannot be written.
    ///
    /// Equal content gives equal bytes: dictionaries are written in the order of their keys by code unit.
    /// What dictionaries keep by their keys is written with the type it has: 1, 1.0 and true differ.
    /// `options` are not used.
    /// Selector: dataWithPropertyList:format:options:error:
    static NSRef<NSData> dataWithPropertyList(const NSId& propertyList, NSPropertyListFormat format,
        NSUInteger options = 0, NSRef<NSError>* error = nullptr);
    /// The same with the error as text, which is stored on failure only.
    /// Selector: dataFromPropertyList:format:errorDescription:
    static NSRef<NSData> dataFromPropertyList(
        const NSId& propertyList, NSPropertyListFormat format, NSRef<NSString>* errorDescription = nullptr);

    /// The property list in `data`, whatever its format, which is stored in `format`. Null with an error,
    /// code 3840, for null, for what is none, and beyond the limits; then `format` is untouched.
    ///
    /// Values that the file shares are shared objects. Of a key that a dictionary has twice the last value
    /// counts. `options` are NSPropertyListImmutable.
    /// Selector: propertyListWithData:options:format:error:
    static NSId propertyListWithData(const NSRef<NSData>& data, NSUInteger options = NSPropertyListImmutable,
        NSPropertyListFormat* format = nullptr, NSRef<NSError>* error = nullptr,
        const NSDecodingLimits& limits = {});
};
