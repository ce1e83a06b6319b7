#include "LUMFoundation/LUMDocumentBundle.h"
#include "LUMFoundation/LUMFileManager.h"
#include "LUMFoundation/LUMFileRef.h"
#include "LUMFoundation/LUMFileRefEnumerator.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSURL.h"
#include "core/status_error.h"
#include "core/statuses.h"
#include "document/bundle_layout.h"
#include "document/bundle_paths.h"

#include <filesystem>

namespace {

/// How a resource gets into the bundle.
using Transfer = bool (*)(const NSRef<NSString>& from, const NSRef<NSString>& to);

bool copied(const NSRef<NSString>& from, const NSRef<NSString>& to)
{
    return NSFileManager::defaultManager()->copyItemAtPath(from, to);
}

// Deliberate: a copy counts as moved, be it one that a move to another volume made and could not end.
bool movedOrCopied(const NSRef<NSString>& from, const NSRef<NSString>& to)
{
    return LUMFileManager::fastMovePath(NSFileManager::defaultManager(), from, to, nullptr)
        || lum::isEntryAt(to) || copied(from, to);
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
    if (!lum::staysInside(name) || !lum::staysInsideOrNull(directory) || !lum::staysInsideOrNull(domain))
        return lum::refuseName(error);
    const auto url = bundle.urlForResourceDomain(name, nullptr, directory, domain, true);
    const auto to = url ? url->path() : nullptr;
    if (!to)
        return lum::refuseLink(error);
    const bool isFree = !lum::isEntryAt(to);
    return (isFree && transfer(source->path(), to)) || lum::fail(error, lum::kStatusFailed);
}

/// Removes a folder in which nothing is; false when it could not be removed.
bool removeIfEmpty(const NSRef<NSString>& folder)
{
    std::error_code problem;
    const std::filesystem::path path = folder->utf8();
    if (!std::filesystem::is_empty(path, problem) || problem)
        return true;
    return std::filesystem::remove(path, problem) && !problem;
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
    if (!lum::staysInsideOrNull(name) || !lum::staysInsideOrNull(directory)
        || !lum::staysInsideOrNull(domain))
        return nullptr;
    const auto bundle = path();
    auto url = NSURL::URLWithString("Contents/", NSURL::fileURLWithPath(bundle));
    const auto goInto = [&](const NSRef<NSString>& folder) {
        if (url && folder)
            url = NSURL::URLWithString(folder->stringByAppendingString("/"), url);
    };
    goInto(lum::escapedForUrl(domain));
    goInto("Resources");
    goInto(lum::escapedForUrl(directory));
    if (auto leaf = lum::escapedForUrl(name)) {
        if (type)
            leaf = leaf->stringByAppendingPathExtension(type);
        url = leaf ? NSURL::URLWithString(leaf, url) : nullptr;
    }
    const auto file = url && url->isFileURL() ? url->path() : nullptr;
    if (!file || !lum::isReachedInside(bundle, file, true))
        return nullptr;
    const auto folder = file->stringByDeletingLastPathComponent();
    const auto manager = NSFileManager::defaultManager();
    if (createDirectory && !manager->fileExistsAtPath(folder))
        (void)LUMFileManager::createDirectoryAtPath(manager, folder, true, nullptr);
    return url;
}

NSRef<NSArray> LUMDocumentBundle::resourceTypesInDomain(
    const NSRef<NSString>& domain, NSRef<NSError>* error) const
{
    std::vector<NSId> types;
    const auto url =
        error && *error ? nullptr : urlForResourceDomain(nullptr, nullptr, nullptr, domain, false, error);
    const auto path = url ? url->path() : nullptr;
    const auto folder =
        path && lum::isReachedInside(this->path(), path) ? LUMFileRef::fileRefWithPath(path) : nullptr;
    const auto children = folder ? folder->childEnumerator() : nullptr;
    if (children)
        for (const NSId& entry : *children) {
            auto child = NSCast<LUMFileRef>(entry);
            const auto childPath = child->path();
            // What a link leads to lies elsewhere.
            if (childPath && childPath->stringByDeletingLastPathComponent()->isEqualToString(folder->path())
                && child->isDirectory())
                types.push_back(NSURL::fileURLWithPath(childPath));
        }
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
    if (!lum::staysInsideOrNull(name) || !lum::staysInsideOrNull(directory)
        || !lum::staysInsideOrNull(domain))
        return lum::refuseName(error);
    const auto url = urlForResourceDomain(name, type, directory, domain, false);
    const auto file = url ? url->path() : nullptr;
    if (!file)
        return lum::refuseLink(error);
    if (!lum::isEntryAt(file) || !NSFileManager::defaultManager()->removeItemAtPath(file))
        return true;
    return removeIfEmpty(file->stringByDeletingLastPathComponent()) || lum::fail(error, lum::kStatusFailed);
}
