#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/FSCatalog.h"
#include "LUMPlatform/NSCoding.h"
#include "LUMPlatform/NSLock.h"
#include "LUMPlatform/NSString.h"

#include <atomic>
#include <cstdint>

class LUMFileRefEnumerator;
class NSArray;
class NSData;
class NSDictionary;
class NSImage;
class NSURL;

/// A lasting handle on one file, folder or package.
///
/// It refers to the object, not to a path: it holds on when the object, or any folder above it, is renamed or
/// moved on the volume. Paths, names and URLs are worked out on every call, and are null once the object is
/// gone. Symbolic links are the alias files of this system: most makers follow them to their target, and
/// remember that they did.
///
///     NSRef<NSError> error;
///     auto take = LUMFileRef::fileRefWithPath("~/Takes/Take 1.aif", &error);
///     if (take && take->renameWithName("Take 2.aif", &error))
///         std::cout << take->path() << '\n';
///
/// Errors are in NSOSStatusErrorDomain, without user information: -43 nothing is there, -48 the name is
/// taken, -37 no possible name, -50 a null path, -120 no folder, -1043 links that lead to themselves, 4 no
/// file URL; any other is the status of the call that failed. `error` may always be null; makers that resolve
/// aliases store null in it first. Only misuse raises:
/// NSInternalInconsistencyException a lock that the caller has already, or has not;
/// NSInvalidArgumentException archiving into a coder without keys, and copying an object of a class that is
/// not registered.
///
/// Threads: one at a time. lock() and unlock() serve callers; no member takes that lock. Makers, and members
/// that ask for a path, make a few system calls; a search for an object that is not where it was is limited,
/// see FSRefMakePath.
///
/// A class derived by LUMFileRefSubclass gets class operations that make its own objects.
class LUM_EXPORT LUMFileRef : public NSObject, public NSCoding, public NSLocking {
public:
    static const NSClass& classObject();

    /// The path of a reference, or null when it has none that is text.
    /// Selector: pathOfFSRef:
    static NSRef<NSString> pathOfFSRef(const FSRef& ref);

    /// A handle on what `path` leads to; a leading tilde is expanded, links at the end are followed.
    /// Selector: fileRefWithPath:error:
    static NSRef<LUMFileRef> fileRefWithPath(const NSRef<NSString>& path, NSRef<NSError>* error = nullptr);
    /// As initWithPathResolveAlias.
    /// Selector: fileRefWithPath:resolveAlias:error:
    static NSRef<LUMFileRef> fileRefWithPathResolveAlias(
        const NSRef<NSString>& path, bool resolveAlias, NSRef<NSError>* error = nullptr);
    /// As initWithFSRefResolveAlias, resolving aliases.
    /// Selector: fileRefWithFSRef:error:
    static NSRef<LUMFileRef> fileRefWithFSRef(const FSRef& ref, NSRef<NSError>* error = nullptr);
    /// As initWithFSRefResolveAlias.
    /// Selector: fileRefWithFSRef:resolveAlias:error:
    static NSRef<LUMFileRef> fileRefWithFSRefResolveAlias(
        const FSRef& ref, bool resolveAlias, NSRef<NSError>* error = nullptr);
    /// As initWithURL.
    /// Selector: fileRefWithURL:error:
    static NSRef<LUMFileRef> fileRefWithURL(const NSRef<NSURL>& url, NSRef<NSError>* error = nullptr);

    /// As fileRefWithFSRef.
    /// Selector: initWithFSRef:error:
    static NSRef<LUMFileRef> initWithFSRef(const FSRef& ref, NSRef<NSError>* error = nullptr);
    /// A handle on the object of `ref`; if `resolveAlias`, on the target when that is a link. Null, with the
    /// status of the resolution, when the link dangles. A reference that names nothing makes a handle on
    /// nothing unless aliases are resolved (-43).
    /// Selector: initWithFSRef:resolveAlias:error:
    static NSRef<LUMFileRef> initWithFSRefResolveAlias(
        const FSRef& ref, bool resolveAlias, NSRef<NSError>* error = nullptr);
    /// As fileRefWithPath.
    /// Selector: initWithPath:error:
    static NSRef<LUMFileRef> initWithPath(const NSRef<NSString>& path, NSRef<NSError>* error = nullptr);
    /// A handle on what `path` names, on a link itself unless `resolveAlias`. Null, with -43 when there is
    /// nothing to be found, for whatever reason, or -50 for a null path.
    /// Selector: initWithPath:resolveAlias:error:
    static NSRef<LUMFileRef> initWithPathResolveAlias(
        const NSRef<NSString>& path, bool resolveAlias, NSRef<NSError>* error = nullptr);
    /// As fileRefWithPath on the path of a file URL. Deliberate: for any other URL, and for null, it stores
    /// the error 4 and answers a handle on nothing, which callers tell by the error.
    /// Selector: initWithURL:error:
    static NSRef<LUMFileRef> initWithURL(const NSRef<NSURL>& url, NSRef<NSError>* error = nullptr);
    /// The handle that was archived, found again by its alias record, its reference URL, or its path, in this
    /// order, with links followed; null when nothing is there. Deliberate: an archive with a URL but neither
    /// alias record nor reference URL makes a handle on nothing.
    /// Selector: initWithCoder:
    static NSRef<LUMFileRef> initWithCoder(NSCoder& coder);

    /// Of the same class, and compare() says the same.
    bool isEqual(const NSId& other) const override;
    /// Selector: isEqualTo:
    bool isEqualTo(const NSId& other) const;
    /// Same for the same object; else the order of the paths, letter by letter where they count as equal.
    /// Handles without a path come first, in an order of their own; null comes before all.
    /// Selector: compare:
    NSComparisonResult compare(const NSRef<LUMFileRef>& other) const;
    /// Deliberate: the number of the volume, equal for all handles on it, since that is what stays when an
    /// object is renamed or moved. Looked up once; 0 for an object that could not be looked at then.
    NSUInteger hash() const override;

    /// Whether the object is a link that leads to something. A handle made by following links is on their
    /// target, so false.
    /// Selector: isAlias
    bool isAlias() const;
    /// A handle on the link that this one was made from; null when it was not made from one.
    /// Selector: aliasFileRef
    NSRef<LUMFileRef> aliasFileRef() const;

    /// Where the object is now, or null; see FSRefMakePath.
    /// Selector: path
    NSRef<NSString> path() const;
    bool fileExists() const; ///< Whether there is a path. Selector: fileExists
    NSRef<NSURL> url() const; ///< The file URL of the path, or null. Selector: url
    /// Renames the object within its folder and replaces nothing: -48 when the name is taken.
    /// Selector: renameWithName:error:; without the second argument renameWithName:
    [[nodiscard]] bool renameWithName(const NSRef<NSString>& name, NSRef<NSError>* error = nullptr);
    NSRef<NSString> name() const; ///< The last component of the path, or null. Selector: name
    NSRef<NSString> baseName() const; ///< The name without its extension. Selector: baseName
    /// Empty when there is none, null without a path.
    /// Selector: pathExtension
    NSRef<NSString> pathExtension() const;
    /// The name to show to the user; empty without a path.
    /// Selector: displayName
    NSRef<NSString> displayName() const;
    /// Whether it is a folder, or a link to one.
    /// Selector: isDirectory
    bool isDirectory() const;

    /// Deliberate: whether this path begins with that of the other, character by character: true for
    /// itself, and for "/a/bc" asked about "/a/b". An accent may be a character of its own.
    /// Selector: isDescendentOf:
    bool isDescendentOf(const NSRef<LUMFileRef>& other) const;
    bool isChildOf(const NSRef<LUMFileRef>& other) const; ///< Selector: isChildOf:
    bool isParentOf(const NSRef<LUMFileRef>& other) const; ///< Selector: isParentOf:
    /// The folder that it is in; the root's is the root. Null without a path.
    /// Selector: parent
    NSRef<LUMFileRef> parent() const;

    /// The visible children, in the order the file system yields them. Links are followed; one that dangles
    /// is there itself. A child is visible when the name of what it leads to does not begin with a full stop.
    ///
    /// Null, and no error, when this is not a folder. A listing that breaks off, or cannot begin, answers
    /// what it had AND stores the error: test both. A handle on a link itself to a folder cannot begin one
    /// (-120). About 3 µs a child.
    /// Selector: childrenError:
    NSRef<NSArray> childrenError(NSRef<NSError>* error = nullptr) const;
    /// The children one by one; null when this is not a folder that can be read.
    /// Selector: childEnumerator
    NSRef<LUMFileRefEnumerator> childEnumerator() const;
    /// Makes an empty file or folder and answers a handle on it. Null with an error when it cannot be made;
    /// null without one when this is not a folder.
    /// Selector: createChildWithName:asDirectory:error:; without the last argument
    /// createChildWithName:asDirectory:
    NSRef<LUMFileRef> createChildWithName(
        const NSRef<NSString>& name, bool asDirectory, NSRef<NSError>* error = nullptr) const;
    /// What is at the path of this folder with `name` appended, links followed: -43 when nothing is, -120
    /// when this is not a folder, -50 for null.
    /// Selector: childWithName:error:; without the second argument childWithName:
    NSRef<LUMFileRef> childWithName(const NSRef<NSString>& name, NSRef<NSError>* error = nullptr) const;
    /// The child of that name, whatever its kind, or a new one.
    /// Selector: createChildIfNeededWithName:asDirectory:error:; without the last argument
    /// createChildIfNeededWithName:asDirectory:
    NSRef<LUMFileRef> createChildIfNeededWithName(
        const NSRef<NSString>& name, bool asDirectory, NSRef<NSError>* error = nullptr) const;

    /// The reference itself, valid while this object lives; renaming replaces it in place.
    /// Selector: fsRef
    const FSRef* fsRef() const { return &mFileRef; }

    /// "LUMFileRef:: 0x1A2B3C4, /Takes/Take 1.aif"; without a path the part from the comma on is missing.
    NSRef<NSString> description() const override;
    /// The same in every locale.
    /// Selector: descriptionWithLocale:
    NSRef<NSString> descriptionWithLocale(const NSId& locale) const;

    /// See NSFileAttributes.h; null without a path.
    /// Selector: attributes
    NSRef<NSDictionary> attributes() const;
    /// Sets what of them can be set, see NSFileManager::setAttributes, and tells nothing.
    /// Selector: setAttributes:
    void setAttributes(const NSRef<NSDictionary>& attributes);
    /// Type, creator and flags of the classic desktop; all zero when there are none.
    /// Selector: fileInfo
    FileInfo fileInfo() const;
    /// The status, 0 for success; see FSSetCatalogInfo.
    /// Selector: setFileInfo:
    OSStatus setFileInfo(const FileInfo& info);
    /// The icon that the desktop shows for it, see NSWorkspace::iconForFile; null without a path.
    /// Selector: icon
    NSRef<NSImage> icon() const;
    /// Whether it lies directly in a trash folder of its volume; further down does not count.
    /// Selector: isInTrash
    bool isInTrash() const;

    void encodeWithCoder(NSCoder& coder) const override;
    /// A handle of its own on the same object, made by archiving this one and reading that archive; null when
    /// there is nothing to be found. Its own lock is free, and whether it was an alias is found out anew.
    NSId copy() const override;

    void lock() override; ///< Not recursive. Selector: lock
    void unlock() override; ///< Selector: unlock

    // Deprecated; use what each names.

    /// As initWithAliasData.
    /// Selector: fileRefWithAliasData:error:
    [[deprecated("archive the handle instead")]] static NSRef<LUMFileRef> fileRefWithAliasData(
        const NSRef<NSData>& data, NSRef<NSError>* error = nullptr);
    /// A handle on what an alias record leads to, see FSResolveAlias. Null without an error for null.
    /// Selector: initWithAliasData:error:
    [[deprecated("archive the handle instead")]] static NSRef<LUMFileRef> initWithAliasData(
        const NSRef<NSData>& data, NSRef<NSError>* error = nullptr);
    /// An alias record, see FSNewAlias; null when the object is gone.
    /// Selector: aliasData
    [[deprecated("archive the handle instead")]] NSRef<NSData> aliasData() const;
    /// Fills the old name of the object and answers the status; -50 for null.
    /// Selector: getFSSpec:
    [[deprecated("use path")]] OSStatus getFSSpec(FSSpec* spec) const;
    /// Selector: children
    [[deprecated("use childrenError")]] NSRef<NSArray> children() const;

protected:
    LUMFileRef();
    ~LUMFileRef() override;

    // What makers do with a new object; false, with the error stored, when it is not to be handed out.
    bool setUpWithFSRef(const FSRef& ref, bool resolveAlias, NSRef<NSError>* error);
    bool setUpWithPath(const NSRef<NSString>& path, bool resolveAlias, NSRef<NSError>* error);
    bool setUpWithURL(const NSRef<NSURL>& url, NSRef<NSError>* error);
    bool setUpWithAliasData(const NSRef<NSData>& data, NSRef<NSError>* error);
    bool setUpWithCoder(NSCoder& coder);

private:
    template<typename Self, typename Base> friend class LUMFileRefSubclass;

    NSLock& madeLock() const;

    bool mWasAliased = false;
    FSRef mAliasRef; // as given
    FSRef mFileRef; // the target, once a link was followed
    // Deliberate: set by nothing; every handle has a place for a URL and a delegate.
    const NSRef<NSURL> mURL {};
    mutable bool mHashSet = false;
    mutable std::uint32_t mHash = 0;
    mutable std::atomic<NSLock*> mLock { nullptr }; // made when it is first taken
    const NSId mDelegate {};
};
