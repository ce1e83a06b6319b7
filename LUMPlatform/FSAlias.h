#pragma once

#include "LUMPlatform/FSRef.h"

class NSData;

/// Describes an object in bytes that can be stored, and from which FSResolveAlias() finds it again.
///
///     NSRef<NSData> record;
///     FSRef found;
///     if (FSNewAlias(file, record) == 0 && FSResolveAlias(record, found) == 0)
///         use(found);
///
/// A record holds the identity of the object, where it is, and what stood above it, in 200 to 400 bytes as a
/// rule; docs/formats/alias-record.md tells all of them. -43 when the object is gone; `record` is untouched
/// on failure. Threads: as for the reference.
NS_EXPORT OSStatus FSNewAlias(const FSRef& target, NSRef<NSData>& record);

/// Finds the object of a record, in another process and after a restart as well.
///
/// It is looked for at its path; with the help of the system, where the process may pass any folder; on its
/// volume from its old folder outward, for a limited time; and when it is nowhere, what has replaced it
/// counts: an object of the same kind at the very path, as is left by a program that saves to a new file. -43
/// when there is nothing of all this, another status when the system does not let it look (-5000), -50 for
/// bytes that are no record, and for null; `target` is untouched then. Threads: any.
NS_EXPORT OSStatus FSResolveAlias(const NSRef<NSData>& record, FSRef& target);
