#pragma once

#include "LUMPlatform/NSObject.h"
#include "LUMPlatform/NSStringConstant.h"

/// Raised for a key that an object has no value for. The text is "NSUnknownKeyException".
extern NS_EXPORT const NSStringConstant NSUndefinedKeyException;

/// The values of an object by their names.
///
///     auto track = NSDictionary::of({ { "title", "Intro" }, { "seconds", 12 } });
///     auto album = NSDictionary::of({ { "tracks", NSArray::of(track) } });
///     std::cout << NSKeyValueCoding::valueForKey(track, "title") << '\n' // Intro
///               << NSKeyValueCoding::valueForKey(track, "@count") << '\n' // 2
///               << NSKeyValueCoding::valueForKeyPath(album, "tracks.title"); // (Intro)
namespace NSKeyValueCoding {

/// The value of `object` that `key` names; null for a null object.
///
/// A class may answer the selector itself. A dictionary answers the value under `key`, null when there is
/// none; an array the array of its elements' values, with NSNull for null. Only a key that begins with "@"
/// asks the dictionary or array itself for the value of the rest, whatever it holds. Every other object
/// answers by its methods get<Key>, <key>, is<Key>, _get<Key> or _<key>, the first there is, where <Key> is
/// the key with its first letter in upper case. Numbers and truth values come as NSNumber (isBool). A method
/// that returns nothing gives null and is not called, so that a key from a file cannot change what it is
/// asked of.
///
/// When nothing answers to the key, as for a null or empty key of anything but a dictionary, the object is
/// sent valueForUndefinedKey:, which raises NSUndefinedKeyException unless its class answers otherwise.
/// Arrays inside each other beyond 1,000 levels raise it, too. Threads: those of the object.
/// Selector: valueForKey:
NS_EXPORT NSId valueForKey(const NSId& object, const NSRef<NSString>& key);

/// The value of the value of ..., each by valueForKey with the next part of `path`; full stops divide it.
/// Null as soon as a value is, and for a null object. A class may answer the selector itself.
/// Selector: valueForKeyPath:
NS_EXPORT NSId valueForKeyPath(const NSId& object, const NSRef<NSString>& path);

}
