// How handles go into archives, come out of them, and are copied that way.
#include "LUMFoundation/LUMFileRef.h"

#include "LUMPlatform/FSAlias.h"
#include "LUMPlatform/NSCoder.h"
#include "LUMPlatform/NSData.h"
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

LUMFileRef::Traces LUMFileRef::traces() const
{
    Traces traces;
    traces.record = lum::aliasDataOf(mFileRef);
    traces.path = path();
    if (const auto url = NSURL::fileURLWithPath(traces.path)) {
        traces.url = url->filePathURL();
        traces.reference = url->fileReferenceURL();
    }
    return traces;
}

bool LUMFileRef::setUpWithTraces(const Traces& traces)
{
    if (traces.record && setUpWithAliasData(traces.record, nullptr))
        return true;
    if (traces.reference && setUpWithURL(traces.reference, nullptr))
        return true;
    // Deliberate: it is the reference once more that is looked at, not the URL. Without one the handle names
    // nothing, and the path is not reached.
    if (traces.url && setUpWithURL(traces.reference, nullptr))
        return true;
    return traces.path && setUpWithPath(traces.path, true, nullptr);
}

void LUMFileRef::encodeWithCoder(NSCoder& coder) const
{
    const Traces traces = this->traces();
    if (traces.record)
        coder.encodeObjectForKey(traces.record, kAliasDataKey);
    if (traces.path)
        coder.encodeObjectForKey(traces.path, kPathKey);
    if (traces.url)
        coder.encodeObjectForKey(traces.url, kUrlKey);
    if (traces.reference)
        coder.encodeObjectForKey(traces.reference, kReferenceUrlKey);
}

bool LUMFileRef::setUpWithCoder(NSCoder& coder)
{
    Traces traces;
    traces.record = coder.decodeObjectForKey<NSData>(kAliasDataKey);
    traces.path = coder.decodeObjectForKey<NSString>(kPathKey);
    traces.url = coder.decodeObjectForKey<NSURL>(kUrlKey);
    traces.reference = coder.decodeObjectForKey<NSURL>(kReferenceUrlKey);
    return setUpWithTraces(traces);
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
    auto copy = NSMake<LUMFileRef>();
    return copy->setUpWithTraces(traces()) ? copy : nullptr;
}
