#pragma once

#include "LUMFoundation/LUMConstants.h"
#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSObject.h"

/// Whether objects can be written as a property list.
///
///     try {
///         LUMPlistable::isPlistable(settings);
///     } catch (const NSException& exception) {
///         std::cerr << exception.reason() << '\n';
///     }
namespace LUMPlistable {

/// True for data, dates, numbers and strings, and for arrays and dictionaries of what is plistable, empty
/// ones included; keys must be strings. A class may answer the selector itself, false as well: then what
/// holds its object is not plistable, and later elements and values are not asked any more, while later keys
/// still are. False for null.
///
/// Anything else raises LUMNonPlistTypeException with the object in the user information under "object", and
/// "object: 1A2B of class: Track can not be written to plist" as its reason (the low half of its address). So
/// does a container that holds itself. A key that is no string raises it without user information.
///
/// Linear in the number of objects met, without recursion. Threads: any, as long as nobody changes the
/// objects; a container that is changed meanwhile raises NSGenericException.
/// Selector: isPlistable
LUM_EXPORT bool isPlistable(const NSId& object);

}
