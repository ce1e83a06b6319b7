#pragma once

#include "LUMFoundation/LUMConstants.h"
#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSString.h"

#include <cstdint>

class LUMFileRef;
class NSKeyedUnarchiverDelegate;
class NSURL;

/// A document that is a folder: codes of its creator and type, and, for each of any number of domains, a
/// dictionary, archived objects by key, and files. docs/formats/document-bundle.md tells where each of them
/// is.
///
/// A domain is a part of the document that belongs to one client of it, named by a text of the client's own.
/// The document's own is LUMDocumentBundle_DocumentDomain; null means it too, unless the operation says
/// otherwise.
///
///     NSRef<NSError> error;
///     auto song = LUMDocumentBundle::documentBundleWithPath("/home/me/Song.song", true, &error);
///     if (!song || !song->saveObject(take, "Take 1", &error)
///         || !song->setDictionary(NSDictionary::of({ { "Title", "Intro" } }), &error)
///         || !song->copyResource(NSURL::fileURLWithPath("/tmp/cover.png"), "Pictures", nullptr, &error))
///         std::cerr << error << '\n';
///
/// Nothing is kept in memory but the codes: each read goes to the disk, each write is in one step, so that
/// whatever happens meanwhile the old content is there or the new one. Folders are made as they are needed,
/// but for dictionaries, which need theirs to be there. The bundle is found again when it, or a folder above
/// it, is renamed or moved on its volume.
///
/// Nothing outside the bundle is read, written or removed. A key, domain, resource or folder whose name would
/// leave it (an absolute path, "..", a NUL inside) fails with the error -37, and one that a symbolic link
/// would take out of it with -5000; removing a link removes the link. Names with a "/" inside are paths
/// within. That holds also when, while an operation runs, somebody moves the bundle and puts another in its
/// place, or exchanges folders or files for links; only lists may then tell of those.
///
/// A key or domain with an empty part, as "a/" and "a//b" have one, would share its place with another, and
/// fails with -37, too.
///
/// A save makes one new file and one rename, and takes no longer the more there is.
///
/// Errors are in NSOSStatusErrorDomain; `error` may be null, and is written on failure only unless an
/// operation says otherwise. Threads: one at a time.
///
/// A class derived by LUMDocumentBundleSubclass gets class operations that make its own objects.
class LUM_EXPORT LUMDocumentBundle : public NSObject {
public:
    static const NSClass& classObject();

    /// A bundle in a folder; null, with the error 1, for anything else and for null.
    /// Selector: initWithFileRef:error:
    static NSRef<LUMDocumentBundle> initWithFileRef(
        const NSRef<LUMFileRef>& fileRef, NSRef<NSError>* error = nullptr);
    /// A bundle in the folder of a file URL. Where nothing is and `create` is set, the folder is made, with
    /// those above it; nothing is put into it yet. Null with the error -43 for a URL of no file, and 1 for
    /// everything else: a null URL, nothing there, no folder, a folder that cannot be made.
    /// Selector: initWithURL:create:error:
    static NSRef<LUMDocumentBundle> initWithURL(
        const NSRef<NSURL>& url, bool create, NSRef<NSError>* error = nullptr);
    /// The same with a path.
    /// Selector: initWithPath:create:error:
    static NSRef<LUMDocumentBundle> initWithPath(
        const NSRef<NSString>& path, bool create, NSRef<NSError>* error = nullptr);
    /// As initWithURL.
    /// Selector: documentBundleWithURL:create:error:
    static NSRef<LUMDocumentBundle> documentBundleWithURL(
        const NSRef<NSURL>& url, bool create, NSRef<NSError>* error = nullptr);
    /// As initWithPath.
    /// Selector: documentBundleWithPath:create:error:
    static NSRef<LUMDocumentBundle> documentBundleWithPath(
        const NSRef<NSString>& path, bool create, NSRef<NSError>* error = nullptr);
    /// As initWithFileRef.
    /// Selector: documentBundleWithFileRef:error:
    static NSRef<LUMDocumentBundle> documentBundleWithFileRef(
        const NSRef<LUMFileRef>& fileRef, NSRef<NSError>* error = nullptr);

    NSRef<LUMFileRef> fileRef() const; ///< Never null. Selector: fileRef
    /// The file URL of the folder, null when it is gone.
    /// Selector: url
    NSRef<NSURL> url() const;
    /// Where the folder is now, null when it is gone.
    /// Selector: path
    NSRef<NSString> path() const;
    /// Whether the other is a bundle with an equal URL.
    bool isEqual(const NSId& other) const override;
    bool isEqualTo(const NSRef<LUMDocumentBundle>& other) const; ///< Selector: isEqualTo:
    NSUInteger hash() const override; ///< That of the URL.

    // The codes: four characters each, the first one in the most significant byte. They are read from the
    // file when they are first needed, and never again.

    std::uint32_t creatorCode(); ///< Selector: creatorCode
    std::uint32_t typeCode(); ///< Selector: typeCode
    /// Takes the code and saves both. Deliberate: before the codes were read, saving reads them first, and
    /// what was just set is lost; call loadPkgInfo() or ask for a code first.
    /// Selector: setCreatorCode:
    void setCreatorCode(std::uint32_t code);
    /// The same.
    /// Selector: setTypeCode:
    void setTypeCode(std::uint32_t code);
    /// Reads the codes; both are 0 when there is no such file, it cannot be read, is no text, or has more
    /// than 1 MiB. Of more than 8 bytes the first 8 count.
    /// Selector: loadPkgInfo
    void loadPkgInfo();
    /// Writes the codes, and tells nothing. A code ends before its first zero byte: a creator of 0 is not
    /// written, and what stands first is read as the creator. Nothing is written when a code is no UTF-8.
    /// Selector: savePkgInfo
    void savePkgInfo();

    // Dictionaries.

    /// Writes the document's own dictionary, as setDictionaryForDomain does.
    /// Selector: setDictionary:error:
    [[nodiscard]] bool setDictionary(const NSRef<NSDictionary>& dictionary, NSRef<NSError>* error = nullptr);
    /// The document's own dictionary, as dictionaryForDomain reads one.
    /// Selector: dictionaryError:
    NSRef<NSDictionary> dictionaryError(NSRef<NSError>* error = nullptr) const;
    /// The dictionary of a domain, from a property list of any format; null when there is none. The error is
    /// never written.
    /// Selector: dictionaryForDomain:error:
    NSRef<NSDictionary> dictionaryForDomain(
        const NSRef<NSString>& domain, NSRef<NSError>* error = nullptr) const;
    /// Writes the dictionary of a domain as a binary property list. False with the error 1, and what is wrong
    /// as its description, when it is no property list; false without an error when it cannot be written, as
    /// in a bundle that has no folder "Contents" yet.
    /// Selector: setDictionary:forDomain:error:
    [[nodiscard]] bool setDictionaryForDomain(const NSRef<NSDictionary>& dictionary,
        const NSRef<NSString>& domain, NSRef<NSError>* error = nullptr);
    /// Where that file is; null for a domain that is refused.
    /// Selector: pathForDictionaryWithDomain:
    NSRef<NSString> pathForDictionaryWithDomain(const NSRef<NSString>& domain) const;

    // Objects. Without a domain they are the document's own.

    /// As saveObjectDomain.
    /// Selector: saveObject:withKey:error:
    [[nodiscard]] bool saveObject(
        const NSId& object, const NSRef<NSString>& key, NSRef<NSError>* error = nullptr);
    /// Writes a keyed archive of the object, which must be one that can be archived (NSCoding), and raises
    /// for others. The error is always written: null on success, and also when only the writing failed.
    /// Selector: saveObject:withKey:domain:error:
    [[nodiscard]] bool saveObjectDomain(const NSId& object, const NSRef<NSString>& key,
        const NSRef<NSString>& domain, NSRef<NSError>* error = nullptr);
    /// As decodeObjectWithKeyDomain.
    /// Selector: decodeObjectWithKey:error:
    NSId decodeObjectWithKey(const NSRef<NSString>& key, NSRef<NSError>* error = nullptr);
    /// The object that was saved; null, without an error, when there is none. The error is always written,
    /// null on success. Raises what NSKeyedUnarchiver does for a file that is no archive. Deliberate: makes
    /// the folders, though it only reads.
    /// Selector: decodeObjectWithKey:domain:error:
    NSId decodeObjectWithKeyDomain(
        const NSRef<NSString>& key, const NSRef<NSString>& domain, NSRef<NSError>* error = nullptr);
    /// The document's own object under `key`, decoded with a delegate that can stand in for classes; null
    /// with the error -43 when there is none.
    /// Selector: decodeObjectWithKey:delegate:error:
    NSId decodeObjectWithKeyDelegate(const NSRef<NSString>& key,
        const NSRef<NSKeyedUnarchiverDelegate>& delegate, NSRef<NSError>* error = nullptr);
    /// Where the object is or will be, whether or not its folder could be made (then with the error); null
    /// for a key or domain that is refused.
    /// Selector: pathForObjectWithKey:domain:createDirectories:error:
    NSRef<NSString> pathForObjectWithKey(const NSRef<NSString>& key, const NSRef<NSString>& domain,
        bool createDirectories, NSRef<NSError>* error = nullptr) const;

    // Resources: files in folders. Deliberate: they have an area without a domain, and one for each domain
    // that is given, LUMDocumentBundle_DocumentDomain among them, which is another one than that without.

    /// As urlForResourceDomain, in the area without a domain; so are those below that take none.
    /// Selector: urlForResource:ofType:inDirectory:createDirectory:error:
    NSRef<NSURL> urlForResource(const NSRef<NSString>& name, const NSRef<NSString>& type,
        const NSRef<NSString>& directory, bool createDirectory, NSRef<NSError>* error = nullptr) const;
    /// The URL of a resource, whether it is there or not: `type` is its extension; type and directory may be
    /// null. With a null name that of the folder. `createDirectory` makes the folder that the URL's path is
    /// in, as far as possible (for a folder the one above it). Null for what would leave the bundle, and for
    /// a folder that is a link leading out; a resource may be such a link. The error is never written.
    /// Deliberate: all but the type is escaped, so in that a "%" begins an escape, and a "?" or "#" ends the
    /// name: "x?y" is the type "x", for removing too. One that has a "/", escaped or not, or makes no URL,
    /// gives null.
    /// Selector: urlForResource:ofType:inDirectory:domain:createDirectory:error:
    NSRef<NSURL> urlForResourceDomain(const NSRef<NSString>& name, const NSRef<NSString>& type,
        const NSRef<NSString>& directory, const NSRef<NSString>& domain, bool createDirectory,
        NSRef<NSError>* error = nullptr) const;
    /// The folders in the area of a domain, as URLs. With an error pointer that holds an error the list is
    /// empty.
    /// Selector: resourceTypesInDomain:error:
    NSRef<NSArray> resourceTypesInDomain(
        const NSRef<NSString>& domain, NSRef<NSError>* error = nullptr) const;
    /// Deliberate: always empty; list the folder instead.
    /// Selector: urlsForResourcesOfType:inDirectory:domain:error:
    NSRef<NSArray> urlsForResourcesOfType(const NSRef<NSString>& type, const NSRef<NSString>& directory,
        const NSRef<NSString>& domain, NSRef<NSError>* error = nullptr) const;
    /// As copyResourceDomain.
    /// Selector: copyResource:toDirectory:rename:error:
    [[nodiscard]] bool copyResource(const NSRef<NSURL>& source, const NSRef<NSString>& directory,
        const NSRef<NSString>& newName, NSRef<NSError>* error = nullptr);
    /// Copies a file or folder into the bundle, under `newName` or, when that is null, its own. False with
    /// the error 1 when something of that name is there or copying fails. Deliberate: true for a URL of no
    /// file, and nothing done. The error is always written, null on success.
    /// Selector: copyResource:toDirectory:rename:domain:error:
    [[nodiscard]] bool copyResourceDomain(const NSRef<NSURL>& source, const NSRef<NSString>& directory,
        const NSRef<NSString>& newName, const NSRef<NSString>& domain, NSRef<NSError>* error = nullptr);
    /// As moveResourceDomain.
    /// Selector: moveResource:toDirectory:rename:error:
    [[nodiscard]] bool moveResource(const NSRef<NSURL>& source, const NSRef<NSString>& directory,
        const NSRef<NSString>& newName, NSRef<NSError>* error = nullptr);
    /// The same, moving. Deliberate: what cannot be moved is copied, and stays where it was.
    /// Selector: moveResource:toDirectory:rename:domain:error:
    [[nodiscard]] bool moveResourceDomain(const NSRef<NSURL>& source, const NSRef<NSString>& directory,
        const NSRef<NSString>& newName, const NSRef<NSString>& domain, NSRef<NSError>* error = nullptr);
    /// As removeResourceDomain.
    /// Selector: removeResource:ofType:inDirectory:error:
    bool removeResource(const NSRef<NSString>& name, const NSRef<NSString>& type,
        const NSRef<NSString>& directory, NSRef<NSError>* error = nullptr);
    /// Removes a resource, and then the folder it was in when that is empty; false with the error 1 when that
    /// folder cannot be removed. Deliberate: true when the resource is not there, and when it cannot be
    /// removed.
    /// Selector: removeResource:ofType:inDirectory:domain:error:
    bool removeResourceDomain(const NSRef<NSString>& name, const NSRef<NSString>& type,
        const NSRef<NSString>& directory, const NSRef<NSString>& domain, NSRef<NSError>* error = nullptr);

    // Domains.

    /// The domains that have anything, once each, in the order in which the folder lists them. The document's
    /// own dictionary does not count for this, nor do links and hidden entries. The error is never written.
    /// Selector: presentDomains:
    NSRef<NSArray> presentDomains(NSRef<NSError>* error = nullptr) const;
    /// Removes all that a domain has; true when there is nothing. Of the document's own these are its
    /// dictionary, objects, and the resources without a domain. Deliberate: that the folder of these
    /// resources is missing in "Contents" is told as the error -43, though the result is true; that the one
    /// of the objects is missing is not told. What belongs to others stays, even if the domain has its name:
    /// the document's folders, and files.
    /// Selector: removeDomain:error:
    bool removeDomain(const NSRef<NSString>& domain, NSRef<NSError>* error = nullptr);
    /// Removes every domain but the document's own; it ends at the first error.
    /// Selector: removeNonDocumentDomains:
    bool removeNonDocumentDomains(NSRef<NSError>* error = nullptr);

protected:
    LUMDocumentBundle();
    ~LUMDocumentBundle() override;

    // What makers do with a new object; false, with the error stored, when it is not to be handed out.
    bool setUpWithFileRef(const NSRef<LUMFileRef>& fileRef, NSRef<NSError>* error);
    bool setUpWithURL(const NSRef<NSURL>& url, bool create, NSRef<NSError>* error);
    bool setUpWithPath(const NSRef<NSString>& path, bool create, NSRef<NSError>* error);

private:
    template<typename Self, typename Base> friend class LUMDocumentBundleSubclass;

    NSRef<LUMFileRef> mFileRef;
    std::uint32_t mCreatorCode = 0;
    std::uint32_t mTypeCode = 0;
    bool mPackageInfoLoaded = false;
    bool mLoadingPkgInfo = false;
};
