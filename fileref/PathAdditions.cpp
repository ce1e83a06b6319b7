#include "LUMFoundation/PathAdditions.h"

#include "LUMPlatform/NSFileManager.h"
#include "core/extension_operation.h"
#include "core/method_tables.h"

namespace {

NSRef<NSString> helpersOf(const NSRef<NSBundle>& bundle)
{
    return bundle->bundlePath()->stringByAppendingPathComponent("Contents/Helpers");
}

NSRef<NSString> helperNamed(const NSRef<NSBundle>& bundle, const NSRef<NSString>& name)
{
    const auto helpers = PathAdditions::helperPath(bundle);
    if (!name || !helpers)
        return nullptr;
    const auto manager = NSFileManager::defaultManager();
    auto plain = helpers->stringByAppendingPathComponent(name);
    if (manager->fileExistsAtPath(plain))
        return plain;
    const auto withExtension = name->stringByAppendingPathExtension("app");
    const auto application = withExtension ? helpers->stringByAppendingPathComponent(withExtension) : nullptr;
    return manager->fileExistsAtPath(application) ? application : nullptr;
}

using HelperPath = lum::ExtensionOperation<"helperPath", &helpersOf>;
using PathForHelper = lum::ExtensionOperation<"pathForHelper:", &helperNamed>;

constexpr NSMethod kMethods[] = {
    HelperPath::method(),
    PathForHelper::method(),
};

}

std::span<const NSMethod> lum::pathAdditionMethods()
{
    return kMethods;
}

NSRef<NSString> PathAdditions::helperPath(const NSRef<NSBundle>& bundle)
{
    return HelperPath::call(bundle);
}

NSRef<NSString> PathAdditions::pathForHelper(const NSRef<NSBundle>& bundle, const NSRef<NSString>& name)
{
    return PathForHelper::call(bundle, name);
}
