#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSException.h"
#include "platform/strings/path_lookup.h"
#include "platform/strings/path_text.h"
#include "platform/strings/string_arguments.h"

using platform::charactersOf;

bool NSString::isAbsolutePath() const
{
    return platform::isAbsolutePath(characters());
}

NSRef<NSArray> NSString::pathComponents() const
{
    return platform::arrayOf(platform::pathComponents(characters()));
}

NSRef<NSString> NSString::pathWithComponents(const NSRef<NSArray>& components)
{
    if (!components)
        return string();
    std::vector<std::u16string_view> parts;
    parts.reserve(components->count());
    for (const NSId& component : *components) {
        auto text = NSCast<NSString>(component);
        if (!text)
            throw NSException(NSInvalidArgumentException,
                stringWithFormat("a path cannot have the component %@", component));
        parts.push_back(text->characters()); // the array keeps it
    }
    return platform::pathWithComponents(parts);
}

NSRef<NSString> NSString::lastPathComponent() const
{
    return platform::lastPathComponent(characters());
}

NSRef<NSString> NSString::pathExtension() const
{
    return platform::pathExtension(characters());
}

NSRef<NSString> NSString::stringByDeletingLastPathComponent() const
{
    return platform::deletingLastPathComponent(characters());
}

NSRef<NSString> NSString::stringByDeletingPathExtension() const
{
    return platform::deletingPathExtension(characters());
}

NSRef<NSString> NSString::stringByAppendingPathComponent(const NSRef<NSString>& component) const
{
    return platform::appendingPathComponent(characters(), charactersOf(component));
}

NSRef<NSString> NSString::stringByAppendingPathExtension(const NSRef<NSString>& extension) const
{
    auto extended = platform::appendingPathExtension(characters(), charactersOf(extension));
    return extended ? stringWithCharacters(*extended) : nullptr;
}

NSRef<NSString> NSString::stringByExpandingTildeInPath() const
{
    return platform::expandingTilde(characters());
}

NSRef<NSString> NSString::stringByStandardizingPath() const
{
    return platform::standardizedPath(characters());
}

std::string NSString::fileSystemRepresentation() const
{
    return utf8();
}
