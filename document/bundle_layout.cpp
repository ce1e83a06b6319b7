#include "document/bundle_layout.h"

#include "LUMFoundation/LUMConstants.h"

bool lum::isDocumentDomain(const NSRef<NSString>& domain)
{
    return !domain || domain->isEqualToString(LUMDocumentBundle_DocumentDomain);
}

NSRef<NSString> lum::contentsIn(const NSRef<NSString>& bundle)
{
    return bundle ? bundle->stringByAppendingPathComponent("Contents") : nullptr;
}

NSRef<NSString> lum::packageInfoIn(const NSRef<NSString>& bundle)
{
    return bundle ? contentsIn(bundle)->stringByAppendingPathComponent("PkgInfo") : nullptr;
}

NSRef<NSString> lum::dictionaryIn(const NSRef<NSString>& bundle, const NSRef<NSString>& domain)
{
    if (!bundle)
        return nullptr;
    const auto name = isDocumentDomain(domain) ? bundle->stringByAppendingPathComponent("Info")
                                               : contentsIn(bundle)->stringByAppendingPathComponent(domain);
    return name->stringByAppendingPathExtension("plist");
}

NSRef<NSString> lum::objectIn(
    const NSRef<NSString>& bundle, const NSRef<NSString>& domain, const NSRef<NSString>& key)
{
    if (!bundle)
        return nullptr;
    auto folder = contentsIn(bundle);
    if (!isDocumentDomain(domain))
        folder = folder->stringByAppendingPathComponent(domain);
    return folder->stringByAppendingPathComponent("Objects")
        ->stringByAppendingPathComponent(key)
        ->stringByAppendingPathExtension("object");
}
