// How handles go into archives, come out of them, and are copied that way.
#include "LUMFoundation/LUMFileRef.h"

#include "LUMPlatform/FSAlias.h"
#include "LUMPlatform/NSCoder.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSURL.h"
#include "core/status_error.h"
#include "fileref/alias_data.h"

namespace {

constexpr const char* kAliasDataKey = "LUMFILEREF_ALIASDATA_KEY";
constexpr const char* kPathKey = "LUMFILEREF_FILEPATH_KEY";
constexpr const char* kUrlKey = "LUMFILEREF_NSURL_KEY";
constexpr const char* kReferenceUrlKey = "LUMFILEREF_NSURLREFERENCE_KEY";

/// Runs once, when the library is loaded.
[[gnu::constructor]] void registerClass()
{
    NSCoding::registerClass<LUMFileRef>();
}

}

NSRef<NSData> lum::aliasDataOf(const FSRef& ref)
{
    NSRef<NSData> record;
    return FSNewAlias(ref, record) == 0 ? record : nullptr;
}

void LUMFileRef::encodeWithCoder(NSCoder& coder) const
{
    if (const auto record = lum::aliasDataOf(mFileRef))
        coder.encodeObjectForKey(record, kAliasDataKey);
    const auto path = this->path();
    if (!path)
        return;
    const auto url = NSURL::fileURLWithPath(path);
    coder.encodeObjectForKey(path, kPathKey);
    coder.encodeObjectForKey(url->filePathURL(), kUrlKey);
    if (const auto reference = url->fileReferenceURL())
        coder.encodeObjectForKey(reference, kReferenceUrlKey);
}

bool LUMFileRef::setUpWithCoder(NSCoder& coder)
{
    const auto record = coder.decodeObjectForKey<NSData>(kAliasDataKey);
    const auto path = coder.decodeObjectForKey<NSString>(kPathKey);
    const auto url = coder.decodeObjectForKey<NSURL>(kUrlKey);
    const auto reference = coder.decodeObjectForKey<NSURL>(kReferenceUrlKey);
    if (record && setUpWithAliasData(record, nullptr))
        return true;
    if (reference && setUpWithURL(reference, nullptr))
        return true;
    // Deliberate: it is the reference once more that is looked at, not the URL. Without one the handle names
    // nothing, and the path is not reached.
    if (url && setUpWithURL(reference, nullptr))
        return true;
    return path && setUpWithPath(path, true, nullptr);
}

bool LUMFileRef::setUpWithAliasData(const NSRef<NSData>& data, NSRef<NSError>* error)
{
    if (!data)
        return false;
    FSRef target;
    if (const OSStatus status = FSResolveAlias(data, target))
        return lum::fail(error, status);
    return setUpWithFSRef(target, true, error);
}

NSId LUMFileRef::copy() const
{
    const NSId self = NSShare(const_cast<LUMFileRef*>(this));
    return NSKeyedUnarchiver::unarchiveObjectWithData(NSKeyedArchiver::archivedDataWithRootObject(self));
}
