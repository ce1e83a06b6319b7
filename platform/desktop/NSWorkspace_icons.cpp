#include "LUMPlatform/NSImage.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSWorkspace.h"
#include "platform/desktop/file_icon.h"
#include "platform/desktop/themed_icons.h"
#include "platform/files/system_path.h"

namespace {

NSRef<NSImage> imageOf(const platform::FileIcon& icon)
{
    auto pixels = platform::themedIcon(icon.names);
    return NSMake<NSImage>(pixels ? std::move(pixels) : platform::builtInIcon(icon.builtIn));
}

}

NSRef<NSImage> NSWorkspace::iconForFile(const NSRef<NSString>& path)
{
    if (!path)
        return nullptr;
    const std::string file = platform::systemPath(path);
    return imageOf(file.empty() ? platform::FileIcon() : platform::iconOfFile(file));
}

NSRef<NSImage> NSWorkspace::iconForFileType(const NSRef<NSString>& type)
{
    if (!type)
        return nullptr;
    if (type->isEqualToString("'fldr'"))
        return imageOf(platform::iconOfFolders());
    if (type->isEqualToString("'APPL'"))
        return imageOf(platform::iconOfApplications());
    const std::string extension = platform::systemPath(type);
    return imageOf(extension.empty() ? platform::FileIcon() : platform::iconOfExtension(extension));
}
