#include "LUMPlatform/NSBundle.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSURL.h"
#include "platform/files/program_file.h"
#include "platform/objects/live_objects.h"

#include <filesystem>

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"bundlePath", &NSBundle::bundlePath>(),
};

/// The root when the system tells no file, or a name that is no text.
NSRef<NSString> mainPath()
{
    const auto path = NSString::stringWithUTF8String(platform::bundleOfProgram(platform::programFile()));
    return path && path->length() > 0 ? path : NSRef<NSString>("/");
}

}

std::string platform::bundleOfProgram(const std::string& file)
{
    const std::filesystem::path folder = std::filesystem::path(file).parent_path();
    const std::filesystem::path contents = folder.parent_path();
    return contents.filename() == "Contents" ? contents.parent_path() : folder;
}

const NSClass& NSBundle::classObject()
{
    static const NSClass& type = NSClass::define("NSBundle", &NSObject::classObject(), kMethods);
    return type;
}

NSBundle::NSBundle(const NSRef<NSString>& path) : mPath(path) { }

NSBundle::~NSBundle() = default;

NSRef<NSBundle> NSBundle::mainBundle()
{
    static NSBundle* const bundle = [] {
        auto made = NSMake<NSBundle>(mainPath());
        platform::discountLiveObject(); // its path, which lives as long
        return platform::makeImmortal(made);
    }();
    return NSShare(bundle);
}

NSRef<NSBundle> NSBundle::bundleWithPath(const NSRef<NSString>& path)
{
    bool isFolder = false;
    NSFileManager::defaultManager()->fileExistsAtPath(path, &isFolder);
    const auto url = isFolder ? NSURL::fileURLWithPath(path) : nullptr;
    return url ? NSMake<NSBundle>(url->path()) : nullptr;
}

NSRef<NSString> NSBundle::bundlePath() const
{
    return mPath;
}

bool NSBundle::isEqual(const NSId& other) const
{
    const auto bundle = NSCast<NSBundle>(other);
    return bundle && mPath->isEqualToString(bundle->mPath);
}

NSUInteger NSBundle::hash() const
{
    return mPath->hash();
}

NSRef<NSString> NSBundle::description() const
{
    return NSString::stringWithFormat("NSBundle <%@>", mPath);
}
