#pragma once

class NSObject;

namespace platform {

/// What an object is to a writer of property lists.
enum class PropertyListKind { String, Number, Array, Dictionary, Data, Date, Uid, None };

/// Subclasses are of the kind of their base. A few comparisons for the classes of this library.
PropertyListKind propertyListKindOf(const NSObject& object);

}
