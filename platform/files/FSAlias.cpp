#include "LUMPlatform/FSAlias.h"

#include "LUMPlatform/NSData.h"
#include "platform/files/alias_resolution.h"
#include "platform/values/errno_status.h"

#include <cerrno>

using platform::kStatusBadParameter;
using platform::kStatusNotFound;
using platform::statusFromErrno;

OSStatus FSNewAlias(const FSRef& target, NSRef<NSData>& record)
{
    if (!target)
        return kStatusNotFound;
    platform::AliasRecord described;
    if (const int problem = platform::describeAlias(*target.node(), described); problem != 0)
        return statusFromErrno(-problem);
    const std::vector<std::byte> bytes = platform::encodeAlias(described);
    if (bytes.empty())
        return statusFromErrno(ENAMETOOLONG);
    record = NSData::dataWithBytes(bytes.data(), bytes.size());
    return 0;
}

OSStatus FSResolveAlias(const NSRef<NSData>& record, FSRef& target)
{
    platform::AliasRecord described;
    if (!record || !platform::decodeAlias(record->bytes(), described))
        return kStatusBadParameter;
    platform::NodeRef found;
    if (const int problem = platform::resolveAlias(described, platform::AliasTarget::Replacement, found);
        problem != 0)
        return statusFromErrno(-problem);
    target = FSRef(std::move(found));
    return 0;
}
