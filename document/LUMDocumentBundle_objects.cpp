#include "LUMFoundation/LUMDocumentBundle.h"
#include "LUMFoundation/LUMFileManager.h"
#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSKeyedUnarchiverDelegate.h"
#include "core/status_error.h"
#include "core/statuses.h"
#include "document/bundle_layout.h"
#include "document/bundle_paths.h"
#include "document/held_place.h"

namespace {

void store(NSRef<NSError>* error, NSRef<NSError> problem)
{
    if (error)
        *error = std::move(problem);
}

/// Where the object is in the bundle that is at the path `bundle`.
NSRef<NSString> objectPath(const NSRef<NSString>& bundle, const NSRef<NSString>& key,
    const NSRef<NSString>& domain, bool createDirectories, NSRef<NSError>* error)
{
    if (!lum::staysInsideAlone(key) || !lum::staysInsideAloneOrNull(domain))
        return lum::refuseName(error);
    auto object = lum::objectIn(bundle, domain, key);
    if (!object)
        return lum::fail(error, lum::kStatusNotFound);
    if (!lum::isReachedInside(bundle, object))
        return lum::refuseLink(error);
    if (createDirectories)
        (void)LUMFileManager::createDirectoryAtPath(
            NSFileManager::defaultManager(), object->stringByDeletingLastPathComponent(), true, error);
    return object;
}

}

NSRef<NSString> LUMDocumentBundle::pathForObjectWithKey(const NSRef<NSString>& key,
    const NSRef<NSString>& domain, bool createDirectories, NSRef<NSError>* error) const
{
    return objectPath(path(), key, domain, createDirectories, error);
}

bool LUMDocumentBundle::saveObject(const NSId& object, const NSRef<NSString>& key, NSRef<NSError>* error)
{
    return saveObjectDomain(object, key, nullptr, error);
}

bool LUMDocumentBundle::saveObjectDomain(
    const NSId& object, const NSRef<NSString>& key, const NSRef<NSString>& domain, NSRef<NSError>* error)
{
    NSRef<NSError> problem;
    const auto bundle = path();
    const auto file = objectPath(bundle, key, domain, true, &problem);
    bool isSaved = false;
    if (file && !problem) {
        lum::HeldPlace place(*mFileRef, bundle, lum::objectIn(lum::kInside, domain, key));
        const auto archive = NSKeyedArchiver::archivedDataWithRootObject(object);
        isSaved = archive && place.replace(*archive);
    }
    store(error, problem);
    return isSaved;
}

NSId LUMDocumentBundle::decodeObjectWithKey(const NSRef<NSString>& key, NSRef<NSError>* error)
{
    return decodeObjectWithKeyDomain(key, nullptr, error);
}

NSId LUMDocumentBundle::decodeObjectWithKeyDomain(
    const NSRef<NSString>& key, const NSRef<NSString>& domain, NSRef<NSError>* error)
{
    NSRef<NSError> problem;
    const auto bundle = path();
    const auto file = objectPath(bundle, key, domain, true, &problem);
    NSId object;
    if (file && !problem) {
        lum::HeldPlace place(*mFileRef, bundle, lum::objectIn(lum::kInside, domain, key));
        const auto archive = place.read();
        object = archive ? NSKeyedUnarchiver::unarchiveObjectWithData(archive) : nullptr;
    }
    store(error, problem);
    return object;
}

NSId LUMDocumentBundle::decodeObjectWithKeyDelegate(
    const NSRef<NSString>& key, const NSRef<NSKeyedUnarchiverDelegate>& delegate, NSRef<NSError>* error)
{
    NSRef<NSError> problem;
    const auto bundle = path();
    const auto file = objectPath(bundle, key, nullptr, true, &problem);
    NSRef<NSData> data;
    if (file && !problem) {
        lum::HeldPlace place(*mFileRef, bundle, lum::objectIn(lum::kInside, nullptr, key));
        data = place.read(&problem);
    }
    NSId object;
    if (data) {
        auto unarchiver = NSKeyedUnarchiver::initForReadingWithData(data);
        unarchiver->setDelegate(delegate);
        object = unarchiver->decodeObjectForKey("root");
        unarchiver->finishDecoding();
    }
    store(error, problem);
    return object;
}
