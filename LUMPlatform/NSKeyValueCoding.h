#pragma once

#include "LUMPlatform/NSObject.h"
#include "LUMPlatform/NSStringConstant.h"

/// Raised for a key that an object has no value for. The text is "NSUnknownKeyException".
extern NS_EXPORT const NSStringConstant NSUndefinedKeyException;

/// The values of an object by their names.
///
///     auto track = NSDictionary::of({ { "title", "Intro" }, { "seconds", 12 } });
///     NSKeyValueCoding::valueForKey(track, "title"); // Intro
///     NSKeyValueCoding::valueForKey(track, "@count"); // 2
namespace NSKeyValueCoding {

/// The value of `object` that `key` names; null for a null object.
///
/// A class may answer the selector itself. A dictionary answers the value under `key`, null when there is
/// none; only a key that begins with "@" asks the dictionary itself for the value of the rest, whatever it
/// holds. Every other object answers by its methods get<Key>, <key>, is<Key>, _get<Key> or _<key>, the first
/// there is, where <Key> is the key with its first letter in upper case. Numbers and truth values come as
/// NSNumber; a method that returns nothing gives null.
///
/// Raises NSUndefinedKeyException when nothing answers to the key, and for a null or empty key of anything
/// but a dictionary. Threads: those of the object.
///
/// Selector: valueForKey:
NS_EXPORT NSId valueForKey(const NSId& object, const NSRef<NSString>& key);

}
