#include "LUMFoundation/LUMDocumentBundle.h"
#include "LUMFoundation/LUMFileRef.h"
#include "LUMFoundation/LUMFileRefEnumerator.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSFileManager.h"
#include "core/status_error.h"
#include "document/bundle_layout.h"
#include "document/bundle_paths.h"

#include <unordered_set>

namespace {

/// The domain that an entry of the folder "Contents" belongs to; null for none.
NSRef<NSString> domainOf(const LUMFileRef& entry)
{
    const auto name = entry.name();
    if (entry.isDirectory()) {
        const bool isDocuments = name->isEqualToString("Objects") || name->isEqualToString("Resources");
        return isDocuments ? NSRef<NSString>(LUMDocumentBundle_DocumentDomain) : name;
    }
    if (!name->pathExtension()->isEqualToString("plist"))
        return nullptr;
    auto domain = name->stringByDeletingPathExtension();
    return domain->isEqualToString("Info") ? NSRef<NSString>(LUMDocumentBundle_DocumentDomain) : domain;
}

bool remove(const NSRef<NSString>& path)
{
    return NSFileManager::defaultManager()->removeItemAtPath(path);
}

bool removeIfThere(const NSRef<NSString>& path)
{
    return !lum::isEntryAt(path) || remove(path);
}

}

NSRef<NSArray> LUMDocumentBundle::presentDomains(NSRef<NSError>*) const
{
    std::vector<NSId> domains;
    std::unordered_set<std::string> known;
    const auto bundle = path();
    const auto path = lum::contentsIn(bundle);
    const auto contents =
        path && lum::isReachedInside(bundle, path) ? LUMFileRef::fileRefWithPath(path) : nullptr;
    const auto children = contents ? contents->childEnumerator() : nullptr;
    if (children) {
        const auto folder = contents->path();
        for (const NSId& entry : *children) {
            auto child = NSCast<LUMFileRef>(entry);
            const auto childPath = child->path();
            // What a link leads to lies elsewhere, and has another name.
            if (!childPath || !childPath->stringByDeletingLastPathComponent()->isEqualToString(folder))
                continue;
            auto domain = domainOf(*child);
            if (domain && known.insert(domain->utf8()).second)
                domains.push_back(std::move(domain));
        }
    }
    return NSArray::arrayWithObjects(std::move(domains));
}

bool LUMDocumentBundle::removeDomain(const NSRef<NSString>& domain, NSRef<NSError>* error)
{
    if (!lum::staysInsideOrNull(domain))
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

    NSRef<NSError> problem;
    bool result = true;
    if (!isOwn)
        result = removeIfThere(first);
    else {
        const auto second = contents->stringByAppendingPathComponent("Resources");
        if (const auto folder = LUMFileRef::fileRefWithPath(contents)) {
            (void)folder->childWithName("Objects", &problem);
            (void)folder->childWithName("Resources", &problem);
        }
        result = removeIfThere(first) && removeIfThere(second);
    }
    result = result && removeIfThere(dictionary);
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
