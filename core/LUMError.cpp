#include "LUMFoundation/LUMError.h"

#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSString.h"

NSRef<NSError> LUMError::errorWithOSStatus(
    OSStatus status, const NSRef<NSString>& description, const NSRef<NSString>& reason)
{
    // Deliberate: the list ends at the first null, so without a description the reason is dropped as well.
    auto userInfo = NSDictionary::dictionaryWithObjectsAndKeys(
        { description, NSLocalizedDescriptionKey, reason, NSLocalizedFailureReasonErrorKey });
    return NSError::errorWithDomain(NSOSStatusErrorDomain, status, userInfo);
}
