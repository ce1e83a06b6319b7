// What URLs have to do with files.
#include "platform/values/NSURL_internal.h"

#include "LUMPlatform/NSFileManager.h"
#include "platform/files/file_reference_form.h"
#include "platform/strings/path_text.h"
#include "platform/strings/percent_escape.h"
#include "platform/strings/utf_conversion.h"

#include <filesystem>

namespace {

using platform::FileReferenceForm;

constexpr std::u16string_view kReferencePath = u"/.file/id=";

/// Escapes what may not stand in a URL, and what would end the path or divide one of its names.
std::optional<std::u16string> escapedPath(std::u16string_view path)
{
    auto escaped = platform::addingPercentEscapes(path);
    if (!escaped)
        return std::nullopt;
    std::u16string result;
    result.reserve(escaped->size());
    for (char16_t unit : *escaped) {
        if (unit == u'?')
            result.append(u"%3F");
        else if (unit == u';')
            result.append(u"%3B");
        else
            result.push_back(unit);
    }
    return result;
}

/// Null when the current folder is gone or its path is no text.
NSRef<NSString> absolutePath(const NSRef<NSString>& path)
{
    if (path->characters().starts_with(u'/'))
        return path;
    std::error_code error;
    const auto folder = NSString::stringWithUTF8String(std::filesystem::current_path(error).native());
    if (error || !folder)
        return nullptr;
    return NSString::stringWithFormat("%@/%@", folder, path);
}

NSRef<NSURL> fileURL(const NSRef<NSString>& path, bool isFolder)
{
    std::u16string text = platform::appendingPathComponent(path->characters(), u"");
    if (isFolder && !text.ends_with(u'/'))
        text.push_back(u'/');
    auto escaped = escapedPath(text);
    if (escaped && escaped->starts_with(kReferencePath))
        escaped->replace(kReferencePath.size() - 1, 1, u"%3D"); // it is a path all the same
    return escaped ? NSURL::URLWithString(u"file://" + *escaped) : nullptr;
}

}

NSRef<NSURL> NSURL::fileURLWithPath(const NSRef<NSString>& path)
{
    if (!path || path->length() == 0 || path->characters().find(u'\0') != std::u16string_view::npos)
        return nullptr;
    const auto absolute = absolutePath(path);
    if (!absolute)
        return nullptr;
    bool isFolder = absolute->characters().ends_with(u'/');
    if (!isFolder)
        NSFileManager::defaultManager()->fileExistsAtPath(absolute, &isFolder);
    return fileURL(absolute, isFolder);
}

bool NSURL::isFileURL() const
{
    const auto host = platform::hostOf(mContent->parts).value_or(std::u16string_view());
    return mContent->parts.scheme && platform::equalIgnoringCase(*mContent->parts.scheme, u"file")
        && (host.empty() || platform::equalIgnoringCase(host, u"localhost"));
}

bool NSURL::isFileReferenceURL() const
{
    return isFileURL() && mContent->parts.path.starts_with(kReferencePath);
}

NSRef<NSString> NSURL::path() const
{
    const std::u16string_view escaped = mContent->parts.path;
    if (isFileReferenceURL()) {
        FileReferenceForm* form = FileReferenceForm::current();
        const auto identity = platform::utf8FromUtf16(escaped.substr(kReferencePath.size()));
        const std::string found = form && identity ? form->pathOf(*identity) : std::string();
        return found.empty() ? nullptr : NSString::stringWithUTF8String(found);
    }
    if (mContent->parts.scheme && !escaped.starts_with(u'/')
        && !(escaped.empty() && mContent->parts.authority))
        return nullptr;
    const auto plain = platform::replacingPercentEscapes(escaped);
    if (!plain || plain->find(u'\0') != std::u16string::npos)
        return nullptr;
    return NSString::stringWithCharacters(platform::withoutTrailingSlashes(*plain));
}

NSRef<NSURL> NSURL::filePathURL() const
{
    if (!isFileURL())
        return nullptr;
    return isFileReferenceURL() ? fileURLWithPath(path()) : NSShare(const_cast<NSURL*>(this));
}

NSRef<NSURL> NSURL::fileReferenceURL() const
{
    if (isFileReferenceURL())
        return path() ? NSShare(const_cast<NSURL*>(this)) : nullptr;
    FileReferenceForm* form = FileReferenceForm::current();
    const auto plain = isFileURL() ? path() : nullptr;
    if (!form || !plain)
        return nullptr;
    const std::string identity = form->identityAt(plain->utf8());
    return identity.empty() ? nullptr : URLWithString("file:///.file/id=" + identity);
}
