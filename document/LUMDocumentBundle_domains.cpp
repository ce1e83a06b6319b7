#include "LUMFoundation/LUMDocumentBundle.h"
#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSFileManager.h"
#include "core/status_error.h"
#include "document/bundle_entries.h"
#include "document/bundle_layout.h"
#include "document/bundle_paths.h"
#include "document/held_place.h"

#include <filesystem>
#include <unordered_set>

namespace fs = std::filesystem;

namespace {

bool isOwnFolder(const NSRef<NSString>& name)
{
    return name->isEqualToString("Objects") || name->isEqualToString("Resources");
}

/// The domain that an entry of the folder "Contents" belongs to; null for none.
NSRef<NSString> domainOf(const lum::BundleEntry& entry)
{
    const auto name = entry.path->lastPathComponent();
    if (entry.isFolder)
        return isOwnFolder(name) ? NSRef<NSString>(LUMDocumentBundle_DocumentDomain) : name;
    if (!name->pathExtension()->isEqualToString("plist"))
        return nullptr;
    auto domain = name->stringByDeletingPathExtension();
    return domain->isEqualToString("Info") ? NSRef<NSString>(LUMDocumentBundle_DocumentDomain) : domain;
}

/// Takes things out of a bundle by their paths. False when something is there and stays, though it should
/// not.
struct Removal {
    const LUMFileRef& fileRef;
    const NSRef<NSString> bundle; ///< Where that is.

    bool removeIfThere(const NSRef<NSString>& path) const
    {
        const lum::HeldPlace place(fileRef, bundle, lum::insideOf(bundle, path));
        return NSFileManager::defaultManager()->removeItemAtPath(place.file()) || !lum::isEntryAt(path);
    }
    /// What only has the name of the domain's folder stays: a folder of the document, and a file, which is
    /// the dictionary of another domain or holds the codes.
    bool removeFolderOf(const NSRef<NSString>& domain, const NSRef<NSString>& path) const
    {
        std::error_code unknown;
        const auto type = fs::symlink_status(path->utf8(), unknown).type();
        if (type == fs::file_type::regular
            || isOwnFolder(domain->pathComponents()->objectAtIndex<NSString>(0)))
            return true;
        return type != fs::file_type::none && removeIfThere(path);
    }
};

}

NSRef<NSArray> LUMDocumentBundle::presentDomains(NSRef<NSError>*) const
{
    std::vector<NSId> domains;
    std::unordered_set<std::string> known;
    const auto bundle = path();
    const auto contents = lum::contentsIn(bundle);
    if (lum::isReachedInside(bundle, contents))
        for (const lum::BundleEntry& entry : lum::entriesIn(contents)) {
            auto domain = domainOf(entry);
            if (domain && known.insert(domain->utf8()).second)
                domains.emplace_back(std::move(domain));
        }
    return NSArray::arrayWithObjects(std::move(domains));
}

bool LUMDocumentBundle::removeDomain(const NSRef<NSString>& domain, NSRef<NSError>* error)
{
    if (!lum::staysInsideAloneOrNull(domain))
        return lum::refuseName(error);
    const auto bundle = path();
    const auto contents = lum::contentsIn(bundle);
    const auto dictionary = lum::dictionaryIn(bundle, domain);
    if (!bundle)
        return true;
    const bool isOwn = lum::isDocumentDomain(domain);
    const auto first = contents->stringByAppendingPathComponent(isOwn ? NSRef<NSString>("Objects") : domain);
    if (!lum::isReachedInside(bundle, first, true) || !lum::isReachedInside(bundle, dictionary, true))
        return lum::refuseLink(error);

    const Removal removal { *mFileRef, bundle };
    NSRef<NSError> problem;
    bool result = true;
    if (!isOwn)
        result = removal.removeFolderOf(domain, first);
    else {
        const auto second = contents->stringByAppendingPathComponent("Resources");
        if (const auto folder = LUMFileRef::fileRefWithPath(contents)) {
            (void)folder->childWithName("Objects", &problem);
            (void)folder->childWithName("Resources", &problem);
        }
        result = removal.removeIfThere(first) && removal.removeIfThere(second);
    }
    result = result && removal.removeIfThere(dictionary);
    if (problem && error)
        *error = problem;
    return result;
}

bool LUMDocumentBundle::removeNonDocumentDomains(NSRef<NSError>* error)
{
    NSRef<NSError> problem;
    bool result = true;
    for (const NSId& entry : presentDomains()) {
        const auto domain = NSCast<NSString>(entry);
        if (lum::isDocumentDomain(domain))
            continue;
        result = result && removeDomain(domain, &problem);
        if (problem && problem->code() != 0)
            break;
    }
    if (problem && error)
        *error = problem;
    return result;
}
