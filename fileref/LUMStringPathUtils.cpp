#include "LUMFoundation/LUMStringPathUtils.h"

#include "LUMPlatform/FSRef.h"
#include "LUMPlatform/NSArray.h"
#include "core/extension_operation.h"
#include "core/method_tables.h"

namespace {

constexpr std::size_t kLongest = 10240; // no path beyond it leads anywhere

/// What the link at the path leads to in the end; null when there is none.
NSRef<NSString> targetOf(const NSRef<NSString>& path)
{
    FSRef ref;
    bool wasAliased = false;
    std::string target;
    if (FSPathMakeRef(path->utf8(), ref) != 0 || FSResolveAliasFile(ref, true, nullptr, &wasAliased) != 0
        || !wasAliased || FSRefMakePath(ref, target) != 0)
        return nullptr;
    return NSString::stringWithUTF8String(target);
}

NSRef<NSString> withoutAliases(const NSRef<NSString>& path)
{
    const auto components = path->pathComponents();
    std::u16string result = u"/";
    for (const NSId& component : *components) {
        const auto name = NSCast<NSString>(component)->characters();
        if (name == u"/")
            continue;
        if (!result.ends_with(u'/'))
            result.push_back(u'/');
        result.append(name);
        const auto target = result.size() <= kLongest ? targetOf(result) : nullptr;
        if (target)
            result = target->characters();
    }
    return result;
}

using ResolveAliases = lum::ExtensionOperation<"resolveAliases", &withoutAliases>;

constexpr NSMethod kMethods[] = {
    ResolveAliases::method(),
};

}

std::span<const NSMethod> lum::stringPathMethods()
{
    return kMethods;
}

NSRef<NSString> LUMStringPathUtils::resolveAliases(const NSRef<NSString>& path)
{
    return ResolveAliases::call(path);
}
