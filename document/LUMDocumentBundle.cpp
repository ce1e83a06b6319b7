#include "LUMFoundation/LUMDocumentBundle.h"

#include "LUMFoundation/LUMFileManager.h"
#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSPropertyListSerialization.h"
#include "LUMPlatform/NSURL.h"
#include "core/status_error.h"
#include "core/statuses.h"
#include "document/bundle_layout.h"
#include "document/bundle_paths.h"
#include "document/held_place.h"
#include "document/package_info.h"

namespace {

// No file of codes is nearly as large; one that is must not fill the memory.
constexpr std::size_t kLargestPackageInfo = 1 << 20;

}

LUMDocumentBundle::LUMDocumentBundle() = default;
LUMDocumentBundle::~LUMDocumentBundle() = default;

NSRef<LUMDocumentBundle> LUMDocumentBundle::initWithFileRef(
    const NSRef<LUMFileRef>& fileRef, NSRef<NSError>* error)
{
    auto made = NSMake<LUMDocumentBundle>();
    return made->setUpWithFileRef(fileRef, error) ? made : nullptr;
}

NSRef<LUMDocumentBundle> LUMDocumentBundle::initWithURL(
    const NSRef<NSURL>& url, bool create, NSRef<NSError>* error)
{
    auto made = NSMake<LUMDocumentBundle>();
    return made->setUpWithURL(url, create, error) ? made : nullptr;
}

NSRef<LUMDocumentBundle> LUMDocumentBundle::initWithPath(
    const NSRef<NSString>& path, bool create, NSRef<NSError>* error)
{
    auto made = NSMake<LUMDocumentBundle>();
    return made->setUpWithPath(path, create, error) ? made : nullptr;
}

NSRef<LUMDocumentBundle> LUMDocumentBundle::documentBundleWithURL(
    const NSRef<NSURL>& url, bool create, NSRef<NSError>* error)
{
    return initWithURL(url, create, error);
}

NSRef<LUMDocumentBundle> LUMDocumentBundle::documentBundleWithPath(
    const NSRef<NSString>& path, bool create, NSRef<NSError>* error)
{
    return initWithPath(path, create, error);
}

NSRef<LUMDocumentBundle> LUMDocumentBundle::documentBundleWithFileRef(
    const NSRef<LUMFileRef>& fileRef, NSRef<NSError>* error)
{
    return initWithFileRef(fileRef, error);
}

bool LUMDocumentBundle::setUpWithFileRef(const NSRef<LUMFileRef>& fileRef, NSRef<NSError>* error)
{
    if (!fileRef || !fileRef->isDirectory())
        return lum::fail(error, lum::kStatusFailed);
    mFileRef = fileRef;
    return true;
}

bool LUMDocumentBundle::setUpWithURL(const NSRef<NSURL>& url, bool create, NSRef<NSError>* error)
{
    if (!url)
        return lum::fail(error, lum::kStatusFailed);
    if (!url->isFileURL())
        return lum::fail(error, lum::kStatusNotFound);
    NSRef<NSError> problem;
    auto folder = LUMFileRef::fileRefWithURL(url, &problem);
    if (!folder && create && problem && problem->code() == lum::kStatusNotFound) {
        problem = nullptr;
        auto made = LUMFileManager::createDirectoryAtPath(
            NSFileManager::defaultManager(), url->path(), true, &problem);
        if (made && !problem)
            folder = LUMFileRef::fileRefWithPath(url->path(), &problem);
    }
    if (!folder || !folder->isDirectory())
        return lum::fail(error, lum::kStatusFailed);
    if (!problem && setUpWithFileRef(folder, &problem))
        return true;
    if (error)
        *error = problem;
    return false;
}

bool LUMDocumentBundle::setUpWithPath(const NSRef<NSString>& path, bool create, NSRef<NSError>* error)
{
    return setUpWithURL(NSURL::fileURLWithPath(path), create, error);
}

NSRef<LUMFileRef> LUMDocumentBundle::fileRef() const
{
    return mFileRef;
}

NSRef<NSURL> LUMDocumentBundle::url() const
{
    return NSURL::fileURLWithPath(path());
}

NSRef<NSString> LUMDocumentBundle::path() const
{
    return mFileRef ? mFileRef->path() : nullptr;
}

bool LUMDocumentBundle::isEqualTo(const NSRef<LUMDocumentBundle>& other) const
{
    const auto own = url();
    return own && other && NSEqual(own, other->url());
}

bool LUMDocumentBundle::isEqual(const NSId& other) const
{
    return isEqualTo(NSCast<LUMDocumentBundle>(other));
}

NSUInteger LUMDocumentBundle::hash() const
{
    const auto own = url();
    return own ? own->hash() : 0;
}

std::uint32_t LUMDocumentBundle::creatorCode()
{
    if (!mPackageInfoLoaded)
        loadPkgInfo();
    return mCreatorCode;
}

std::uint32_t LUMDocumentBundle::typeCode()
{
    if (!mPackageInfoLoaded)
        loadPkgInfo();
    return mTypeCode;
}

// Deliberate: the code is stored first, and saving then reads both if they were not read before.

void LUMDocumentBundle::setCreatorCode(std::uint32_t code)
{
    mCreatorCode = code;
    savePkgInfo();
}

void LUMDocumentBundle::setTypeCode(std::uint32_t code)
{
    mTypeCode = code;
    savePkgInfo();
}

void LUMDocumentBundle::loadPkgInfo()
{
    mLoadingPkgInfo = true;
    const auto bundle = path();
    const auto file = lum::packageInfoIn(bundle);
    lum::HeldPlace place(*mFileRef, bundle, lum::packageInfoIn(lum::kInside));
    const auto data = lum::isReachedInside(bundle, file) ? place.read(nullptr, kLargestPackageInfo) : nullptr;
    // Deliberate: whatever stands in the way of reading, there are no codes then.
    const lum::PackageInfo info = data ? lum::readPackageInfo(data->bytes()) : lum::PackageInfo();
    mCreatorCode = info.creator;
    mTypeCode = info.type;
    mLoadingPkgInfo = false;
    mPackageInfoLoaded = true;
}

void LUMDocumentBundle::savePkgInfo()
{
    if (!mPackageInfoLoaded)
        loadPkgInfo();
    const auto bytes = lum::writePackageInfo({ creatorCode(), typeCode() });
    const auto bundle = path();
    const auto file = lum::packageInfoIn(bundle);
    if (!bytes || !lum::isReachedInside(bundle, file))
        return;
    const auto manager = NSFileManager::defaultManager();
    const auto contents = file->stringByDeletingLastPathComponent();
    if (!manager->fileExistsAtPath(contents))
        (void)LUMFileManager::createDirectoryAtPath(manager, contents, true, nullptr);
    lum::HeldPlace place(*mFileRef, bundle, lum::packageInfoIn(lum::kInside));
    place.replace(*NSData::dataWithBytes(bytes->data(), bytes->size()));
}

bool LUMDocumentBundle::setDictionary(const NSRef<NSDictionary>& dictionary, NSRef<NSError>* error)
{
    return setDictionaryForDomain(dictionary, nullptr, error);
}

NSRef<NSDictionary> LUMDocumentBundle::dictionaryError(NSRef<NSError>* error) const
{
    return dictionaryForDomain(nullptr, error);
}

NSRef<NSString> LUMDocumentBundle::pathForDictionaryWithDomain(const NSRef<NSString>& domain) const
{
    return lum::staysInsideAloneOrNull(domain) ? lum::dictionaryIn(path(), domain) : nullptr;
}

NSRef<NSDictionary> LUMDocumentBundle::dictionaryForDomain(
    const NSRef<NSString>& domain, NSRef<NSError>*) const
{
    if (!lum::staysInsideAloneOrNull(domain))
        return nullptr;
    const auto bundle = path();
    const auto file = lum::dictionaryIn(bundle, domain);
    if (!lum::isReachedInside(bundle, file))
        return nullptr;
    lum::HeldPlace place(*mFileRef, bundle, lum::dictionaryIn(lum::kInside, domain));
    const auto data = place.read();
    return data ? NSCast<NSDictionary>(
               NSPropertyListSerialization::propertyListWithData(data, NSPropertyListImmutable, nullptr))
                : nullptr;
}

bool LUMDocumentBundle::setDictionaryForDomain(
    const NSRef<NSDictionary>& dictionary, const NSRef<NSString>& domain, NSRef<NSError>* error)
{
    NSRef<NSString> problem;
    auto data = NSPropertyListSerialization::dataFromPropertyList(
        dictionary, NSPropertyListBinaryFormat_v1_0, &problem);
    if (problem) {
        if (error)
            *error = NSError::errorWithDomain(NSOSStatusErrorDomain, lum::kStatusFailed,
                NSDictionary::of({ { NSLocalizedDescriptionKey, problem } }));
        return false;
    }
    if (!lum::staysInsideAloneOrNull(domain))
        return lum::refuseName(error);
    const auto bundle = path();
    const auto file = lum::dictionaryIn(bundle, domain);
    if (file && !lum::isReachedInside(bundle, file))
        return lum::refuseLink(error);
    lum::HeldPlace place(*mFileRef, bundle, lum::dictionaryIn(lum::kInside, domain));
    return data && place.replace(*data);
}
