#include "LUMPlatform/NSFastEnumeration.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

void NSRaiseEnumerationMutation(const NSObject& collection)
{
    throw NSException(NSGenericException,
        "Collection " + collection.NSObject::description()->utf8() + " was mutated while being enumerated.");
}
