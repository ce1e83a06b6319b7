#pragma once

#include "LUMFoundation/LUMConstants.h"
#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSData.h"

/// A fingerprint of the values in a property list.
///
///     auto before = LUMSerializedPlist::serializedPlist(settings);
///     edit(settings);
///     bool isChanged = !before->isEqualToData(LUMSerializedPlist::serializedPlist(settings));
namespace LUMSerializedPlist {

/// The values as bytes: of each leaf its binary property list, one behind the other, elements of arrays in
/// order, values of dictionaries in the order of their keys. Keys are not written, nor where a container
/// begins, so this cannot be read back. Empty for an empty container.
///
/// Keys are ordered by compare:, those that it takes for the same by their code units, and each value is
/// asked for by valueForKey: (see NSKeyValueCoding), so a key that begins with "@" names a property of the
/// dictionary. A class may answer the selector itself; null adds nothing. Null for null, and for a leaf that
/// answers false to isPlistable.
///
/// Raises LUMNonPlistTypeException for what is no property list, and LUMSerializedPlistException for what
/// only says it is one and for a container that holds itself, or that stands in so many places that this
/// repeats more than 128 MiB: "Unable serialize object:1A2B of class:Track using dataWithPropertyList:".
///
/// Linear in the number of objects and of bytes, but for the sorting of keys, and without recursion. Threads:
/// any, as long as nobody changes the objects; an array that is changed meanwhile raises NSGenericException.
/// Selector: serializedPlist
LUM_EXPORT NSRef<NSData> serializedPlist(const NSId& object);

}
