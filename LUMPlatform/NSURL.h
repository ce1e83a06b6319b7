#pragma once

#include "LUMPlatform/NSObject.h"

#include <memory>

/// An immutable URL, whole or relative to a base, by RFC 3986.
///
/// The text of a URL is ASCII; anything else in it is escaped first, as
/// NSURLUtilities::stringByAddingPercentEscapesUsingEncoding does. A text that is no URL, and one of more
/// than 2^20 characters, makes null. Work takes time linear in the text. Threads: any.
///
///     auto folder = NSURL::fileURLWithPath("/home/me/Song.doc"); // file:///home/me/Song.doc/ if a folder
///     auto picture = NSURL::URLWithString("Contents/a%20b.png", folder);
///     std::cout << picture->path(); // /home/me/Song.doc/Contents/a b.png
class NS_EXPORT NSURL : public NSObject {
public:
    static const NSClass& classObject();

    /// The file URL of a path. A relative path starts at the process's current folder; a tilde is an ordinary
    /// character. The URL ends with a slash when the path does, or when it leads to a folder right now: a
    /// reference relative to it then lies inside that folder. Null for a path that is null, empty, or has a
    /// NUL or half a surrogate pair inside. Looks at the disk.
    /// Selector: fileURLWithPath:
    static NSRef<NSURL> fileURLWithPath(const NSRef<NSString>& path);
    /// Null for a null text; for an empty one without a base; for one that is no URL; and when neither the
    /// text nor the base has a scheme though there is a base. A text with a scheme of its own needs no base
    /// and has none.
    /// Selector: URLWithString:relativeToURL:; without the second argument URLWithString:
    static NSRef<NSURL> URLWithString(const NSRef<NSString>& text, const NSRef<NSURL>& base = nullptr);

    NSRef<NSString> relativeString() const; ///< As given. Selector: relativeString
    NSRef<NSURL> baseURL() const; ///< Whole, so without a base of its own; or null. Selector: baseURL
    /// As seen from the base, with "." and ".." worked out.
    /// Selector: absoluteString
    NSRef<NSString> absoluteString() const;
    NSRef<NSURL> absoluteURL() const; ///< Itself when there is no base. Selector: absoluteURL

    // Parts of the absolute text, still escaped; null for one that is not there.
    NSRef<NSString> scheme() const; ///< Selector: scheme
    NSRef<NSString> host() const; ///< The brackets of an address belong to it. Selector: host
    NSRef<NSString> query() const; ///< Selector: query
    NSRef<NSString> fragment() const; ///< Selector: fragment

    /// Whether the scheme is "file" and the host is none, empty, or "localhost".
    /// Selector: isFileURL
    bool isFileURL() const;
    /// Whether it names a file by its identity: file:///.file/id=...
    /// Selector: isFileReferenceURL
    bool isFileReferenceURL() const;
    /// The path without escapes and without a slash at its end. Null when the escapes are no UTF-8 or stand
    /// for a NUL, and when there is a scheme but the rest is no path ("mailto:me"). Of a file reference URL
    /// it is where the file is now, worked out on each call, or null.
    /// Selector: path
    NSRef<NSString> path() const;
    // These two are null without a path.
    NSRef<NSString> lastPathComponent() const; ///< Selector: lastPathComponent
    NSRef<NSString> pathExtension() const; ///< Selector: pathExtension

    /// The same file by its path; itself unless it is a file reference URL. Null when it is no file URL, or
    /// its file is gone.
    /// Selector: filePathURL
    NSRef<NSURL> filePathURL() const;
    /// The same file by its identity, which stays when the file is renamed or moved on its volume. Null when
    /// it is no file URL or nothing is there. Looks at the disk.
    /// Selector: fileReferenceURL
    NSRef<NSURL> fileReferenceURL() const;

    bool isEqual(const NSId& other) const override; ///< The same relative text and equal bases.
    NSUInteger hash() const override;
    NSRef<NSString> description() const override; ///< The text; with a base "text -- base".
    NSId copy() const override; ///< Itself.

protected:
    struct Content;
    explicit NSURL(std::unique_ptr<const Content> content);
    ~NSURL() override;

private:
    static NSRef<NSURL> whole(const NSRef<NSString>& text);

    std::unique_ptr<const Content> mContent;
};
