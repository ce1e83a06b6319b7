#include "LUMFoundation/LUMDocumentBundle.h"
#include "LUMFoundation/LUMFileManager.h"
#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSURL.h"
#include "core/status_error.h"
#include "core/statuses.h"
#include "document/bundle_entries.h"
#include "document/bundle_paths.h"
#include "document/held_place.h"

namespace {

/// How a resource gets into the bundle.
using Transfer = bool (*)(const NSRef<NSString>& from, const NSRef<NSString>& to);

bool copied(const NSRef<NSString>& from, const NSRef<NSString>& to)
{
    return NSFileManager::defaultManager()->copyItemAtPath(from, to);
}

/// Deliberate: a copy counts as moved, be it one that a move to another volume made and could not end. What
/// somebody else has put there meanwhile does not.
bool movedOrCopied(const NSRef<NSString>& from, const NSRef<NSString>& to)
{
    NSRef<NSError> problem;
    if (NSFileManager::defaultManager()->moveItemAtPath(from, to, &problem))
        return true;
    return problem->code() != lum::kStatusExists && (lum::isEntryAt(to) || copied(from, to));
}

/// What tells a resource from all others. All may be null.
struct Resource {
    NSRef<NSString> name;
    NSRef<NSString> type;
    NSRef<NSString> directory;
    NSRef<NSString> domain;
};

NSRef<NSURL> urlOf(const Resource& resource, const NSRef<NSString>& bundle)
{
    auto url = NSURL::URLWithString("Contents/", NSURL::fileURLWithPath(bundle));
    const auto goInto = [&](const NSRef<NSString>& folder) {
        if (url && folder)
            url = NSURL::URLWithString(folder->stringByAppendingString("/"), url);
    };
    goInto(lum::escapedForUrl(resource.domain));
    goInto("Resources");
    goInto(lum::escapedForUrl(resource.directory));
    auto leaf = lum::escapedForUrl(resource.name);
    if (!url || !leaf)
        return url;
    // Deliberate: the type goes into the URL as it stands.
    if (resource.type)
        leaf = leaf->stringByAppendingPathExtension(resource.type);
    return NSURL::URLWithString(leaf, url);
}

/// The URL of a resource; null, with the error, when the bundle is gone or the resource would be outside it.
/// If `mayBeLink`, a link in the place of the resource is the resource, wherever it leads.
NSRef<NSURL> urlInside(
    const Resource& resource, const NSRef<NSString>& bundle, bool mayBeLink, NSRef<NSError>* error)
{
    if (!bundle)
        return lum::fail(error, lum::kStatusNotFound);
    auto url = lum::staysInsideOrNull(resource.name) && lum::staysInName(resource.type)
            && lum::staysInsideOrNull(resource.directory) && lum::staysInsideAloneOrNull(resource.domain)
        ? urlOf(resource, bundle)
        : nullptr;
    const auto file = url && url->isFileURL() ? url->path() : nullptr;
    if (!file)
        return lum::refuseName(error);
    if (!lum::isReachedInside(bundle, file, mayBeLink))
        return lum::refuseLink(error);
    return url;
}

/// Makes the folder that the path is in, as far as possible.
void makeFolderOf(const NSRef<NSString>& path)
{
    const auto manager = NSFileManager::defaultManager();
    const auto folder = path->stringByDeletingLastPathComponent();
    if (!manager->fileExistsAtPath(folder))
        (void)LUMFileManager::createDirectoryAtPath(manager, folder, true, nullptr);
}

/// What `copyResource` and `moveResource` have in common.
bool place(const LUMDocumentBundle& bundle, Transfer transfer, const NSRef<NSURL>& source,
    const NSRef<NSString>& directory, const NSRef<NSString>& newName, const NSRef<NSString>& domain,
    NSRef<NSError>* error)
{
    if (error)
        *error = nullptr;
    if (!source || !source->isFileURL())
        return true;
    const auto name = newName ? newName : source->lastPathComponent();
    if (!name)
        return lum::refuseName(error);
    const auto path = bundle.path();
    const auto url = urlInside({ name, nullptr, directory, domain }, path, true, error);
    if (!url)
        return false;
    makeFolderOf(url->path());
    const lum::HeldPlace to(*bundle.fileRef(), path, lum::insideOf(path, url->path()));
    const bool isFree = to.file() && !lum::isEntryAt(to.file());
    return (isFree && transfer(source->path(), to.file())) || lum::fail(error, lum::kStatusFailed);
}

}

NSRef<NSURL> LUMDocumentBundle::urlForResource(const NSRef<NSString>& name, const NSRef<NSString>& type,
    const NSRef<NSString>& directory, bool createDirectory, NSRef<NSError>* error) const
{
    return urlForResourceDomain(name, type, directory, nullptr, createDirectory, error);
}

NSRef<NSURL> LUMDocumentBundle::urlForResourceDomain(const NSRef<NSString>& name, const NSRef<NSString>& type,
    const NSRef<NSString>& directory, const NSRef<NSString>& domain, bool createDirectory,
    NSRef<NSError>*) const
{
    // A folder is asked for to be listed, so it may not be a link that leads out.
    auto url = urlInside({ name, type, directory, domain }, path(), name != nullptr, nullptr);
    if (url && createDirectory)
        makeFolderOf(url->path());
    return url;
}

NSRef<NSArray> LUMDocumentBundle::resourceTypesInDomain(
    const NSRef<NSString>& domain, NSRef<NSError>* error) const
{
    std::vector<NSId> types;
    const auto url =
        error && *error ? nullptr : urlForResourceDomain(nullptr, nullptr, nullptr, domain, false, error);
    for (const lum::BundleEntry& entry : lum::entriesIn(url ? url->path() : nullptr))
        if (entry.isFolder)
            types.emplace_back(NSURL::fileURLWithPath(entry.path));
    return NSArray::arrayWithObjects(std::move(types));
}

NSRef<NSArray> LUMDocumentBundle::urlsForResourcesOfType(
    const NSRef<NSString>&, const NSRef<NSString>&, const NSRef<NSString>&, NSRef<NSError>*) const
{
    return NSArray::array();
}

bool LUMDocumentBundle::copyResource(const NSRef<NSURL>& source, const NSRef<NSString>& directory,
    const NSRef<NSString>& newName, NSRef<NSError>* error)
{
    return copyResourceDomain(source, directory, newName, nullptr, error);
}

bool LUMDocumentBundle::copyResourceDomain(const NSRef<NSURL>& source, const NSRef<NSString>& directory,
    const NSRef<NSString>& newName, const NSRef<NSString>& domain, NSRef<NSError>* error)
{
    return place(*this, copied, source, directory, newName, domain, error);
}

bool LUMDocumentBundle::moveResource(const NSRef<NSURL>& source, const NSRef<NSString>& directory,
    const NSRef<NSString>& newName, NSRef<NSError>* error)
{
    return moveResourceDomain(source, directory, newName, nullptr, error);
}

bool LUMDocumentBundle::moveResourceDomain(const NSRef<NSURL>& source, const NSRef<NSString>& directory,
    const NSRef<NSString>& newName, const NSRef<NSString>& domain, NSRef<NSError>* error)
{
    return place(*this, movedOrCopied, source, directory, newName, domain, error);
}

bool LUMDocumentBundle::removeResource(const NSRef<NSString>& name, const NSRef<NSString>& type,
    const NSRef<NSString>& directory, NSRef<NSError>* error)
{
    return removeResourceDomain(name, type, directory, nullptr, error);
}

bool LUMDocumentBundle::removeResourceDomain(const NSRef<NSString>& name, const NSRef<NSString>& type,
    const NSRef<NSString>& directory, const NSRef<NSString>& domain, NSRef<NSError>* error)
{
    const auto bundle = path();
    const auto url = urlInside({ name, type, directory, domain }, bundle, true, error);
    if (!url)
        return false;
    const lum::HeldPlace place(*mFileRef, bundle, lum::insideOf(bundle, url->path()));
    if (!NSFileManager::defaultManager()->removeItemAtPath(place.file()))
        return true;
    return place.removeFolderIfEmpty() || lum::fail(error, lum::kStatusFailed);
}
