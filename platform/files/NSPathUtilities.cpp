#include "LUMPlatform/NSPathUtilities.h"

#include "LUMPlatform/NSFileManager.h"
#include "platform/files/system_path.h"
#include "platform/objects/method_tables.h"

#include <cstdlib>
#include <filesystem>

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"stringByResolvingSymlinksInPath", &NSPathUtilities::stringByResolvingSymlinksInPath>(),
};

}

std::span<const NSMethod> platform::pathUtilityMethods()
{
    return kMethods;
}

NSRef<NSString> NSTemporaryDirectory()
{
    const NSRef<NSString> told = std::getenv("TMPDIR");
    bool isFolder = false;
    if (told && told->characters().starts_with(u'/'))
        NSFileManager::defaultManager()->fileExistsAtPath(told, &isFolder);
    if (!isFolder)
        return "/tmp/";
    return told->characters().ends_with(u'/') ? told : told->stringByAppendingString("/");
}

NSRef<NSString> NSPathUtilities::stringByResolvingSymlinksInPath(const NSRef<NSString>& path)
{
    const auto expanded = path ? path->stringByExpandingTildeInPath() : nullptr;
    const std::string bytes = platform::systemPath(expanded);
    if (bytes.empty())
        return path;
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(bytes, error);
    const std::filesystem::path resolved =
        error ? absolute : std::filesystem::weakly_canonical(absolute, error);
    const auto text = error ? nullptr : NSString::stringWithUTF8String(resolved.native());
    return text ? text->stringByAppendingPathComponent("") : expanded;
}
