#include "LUMFoundation/LUMFileRef.h"

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSURL.h"
#include "core/status_error.h"
#include "core/statuses.h"

#include <optional>

using lum::fail;

namespace {

/// Nothing for a text with half a surrogate pair, which must not name a file with a replacement character.
std::optional<std::string> systemPath(const NSRef<NSString>& path)
{
    std::string bytes = path->utf8();
    if (bytes.find("\xEF\xBF\xBD") != std::string::npos
        && !path->canBeConvertedToEncoding(NSUTF8StringEncoding))
        return std::nullopt;
    return bytes;
}

}

LUMFileRef::LUMFileRef() = default;

LUMFileRef::~LUMFileRef()
{
    if (NSLock* lock = mLock.load())
        lock->release();
}

bool LUMFileRef::setUpWithFSRef(const FSRef& ref, bool resolveAlias, NSRef<NSError>* error)
{
    if (error)
        *error = nullptr;
    mFileRef = ref;
    mAliasRef = ref;
    mWasAliased = false;
    if (!resolveAlias)
        return true;
    if (const OSStatus status = FSResolveAliasFile(mFileRef, true, nullptr, &mWasAliased))
        return fail(error, status);
    return true;
}

bool LUMFileRef::setUpWithPath(const NSRef<NSString>& path, bool resolveAlias, NSRef<NSError>* error)
{
    if (error)
        *error = nullptr;
    if (!path)
        return fail(error, lum::kStatusBadParameter);
    FSRef ref;
    const bool hasTilde = path->characters().starts_with(u'~');
    const auto bytes = systemPath(hasTilde ? path->stringByExpandingTildeInPath() : path);
    if (!bytes || FSPathMakeRef(*bytes, ref) != 0)
        return fail(error, lum::kStatusNotFound);
    return setUpWithFSRef(ref, resolveAlias, error);
}

bool LUMFileRef::setUpWithURL(const NSRef<NSURL>& url, NSRef<NSError>* error)
{
    if (url && url->isFileURL())
        return setUpWithPath(url->path(), true, error);
    // Deliberate: the object, which names nothing, is handed out all the same. Callers test the error.
    mFileRef = {};
    mAliasRef = {};
    mWasAliased = false;
    fail(error, lum::kStatusNoFileURL);
    return true;
}

NSRef<NSString> LUMFileRef::pathOfFSRef(const FSRef& ref)
{
    std::string path;
    return FSRefMakePath(ref, path) == 0 ? NSString::stringWithUTF8String(path) : nullptr;
}

bool LUMFileRef::isEqual(const NSId& other) const
{
    return isEqualTo(other);
}

bool LUMFileRef::isEqualTo(const NSId& other) const
{
    return other && &other->isa() == &isa() && compare(NSCast<LUMFileRef>(other)) == NSOrderedSame;
}

NSComparisonResult LUMFileRef::compare(const NSRef<LUMFileRef>& other) const
{
    if (!other)
        return NSOrderedDescending;
    if (FSCompareFSRefs(mFileRef, other->mFileRef) == 0)
        return NSOrderedSame;
    const auto path = this->path();
    const auto otherPath = other->path();
    if (path && otherPath) {
        // Texts that differ may count as the same there, as long and short forms of one accent do.
        const NSComparisonResult order = path->compare(otherPath);
        return order != NSOrderedSame ? order : path->compareOptions(otherPath, NSLiteralSearch);
    }
    if (path || otherPath)
        return path ? NSOrderedDescending : NSOrderedAscending;
    return FSOrderFSRefs(mFileRef, other->mFileRef) < 0 ? NSOrderedAscending : NSOrderedDescending;
}

bool LUMFileRef::isAlias() const
{
    FSRef ref = mFileRef;
    bool wasAliased = false;
    return FSResolveAliasFile(ref, true, nullptr, &wasAliased) == 0 && wasAliased;
}

NSRef<LUMFileRef> LUMFileRef::aliasFileRef() const
{
    return mWasAliased ? fileRefWithFSRefResolveAlias(mAliasRef, false) : nullptr;
}

NSRef<NSString> LUMFileRef::path() const
{
    return pathOfFSRef(mFileRef);
}

bool LUMFileRef::fileExists() const
{
    return path() != nullptr;
}

NSRef<NSURL> LUMFileRef::url() const
{
    return NSURL::fileURLWithPath(path());
}

bool LUMFileRef::renameWithName(const NSRef<NSString>& name, NSRef<NSError>* error)
{
    const std::u16string_view characters = name ? name->characters() : std::u16string_view();
    if (const OSStatus status = FSRenameUnicode(mFileRef, characters, &mFileRef))
        return fail(error, status);
    return true;
}

NSRef<NSString> LUMFileRef::name() const
{
    const auto path = this->path();
    return path ? path->lastPathComponent() : nullptr;
}

NSRef<NSString> LUMFileRef::baseName() const
{
    const auto name = this->name();
    return name ? name->stringByDeletingPathExtension() : nullptr;
}

NSRef<NSString> LUMFileRef::pathExtension() const
{
    const auto path = this->path();
    return path ? path->pathExtension() : nullptr;
}

NSRef<NSString> LUMFileRef::displayName() const
{
    return NSFileManager::defaultManager()->displayNameAtPath(path());
}

bool LUMFileRef::isDirectory() const
{
    bool isDirectory = false;
    return NSFileManager::defaultManager()->fileExistsAtPath(path(), &isDirectory) && isDirectory;
}

bool LUMFileRef::isDescendentOf(const NSRef<LUMFileRef>& other) const
{
    // Deliberate: a test of the characters, so "/a/bc" counts as below "/a/b", and each object as below
    // itself.
    const auto path = this->path();
    const auto otherPath = other ? other->path() : nullptr;
    return path && otherPath && path->characters().starts_with(otherPath->characters());
}

bool LUMFileRef::isChildOf(const NSRef<LUMFileRef>& other) const
{
    const auto parent = this->parent();
    return parent && parent->isEqual(other);
}

bool LUMFileRef::isParentOf(const NSRef<LUMFileRef>& other) const
{
    return other && isEqual(other->parent());
}

NSRef<LUMFileRef> LUMFileRef::parent() const
{
    const auto path = this->path();
    return path ? fileRefWithPath(path->stringByDeletingLastPathComponent()) : nullptr;
}

NSRef<NSString> LUMFileRef::description() const
{
    const auto address = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(this));
    const auto text = NSString::stringWithFormat("LUMFileRef:: 0x%X", address);
    const auto path = this->path();
    return path ? text->stringByAppendingFormat(", %@", path) : text;
}

NSRef<NSString> LUMFileRef::descriptionWithLocale(const NSId& /*locale*/) const
{
    return description();
}

/// The lock is made when it is first taken: few of a hundred thousand handles ever are.
NSLock& LUMFileRef::madeLock() const
{
    NSLock* lock = mLock.load(std::memory_order_acquire);
    if (!lock) {
        NSRef<NSLock> made = NSMake<NSLock>();
        if (mLock.compare_exchange_strong(lock, made.get(), std::memory_order_acq_rel))
            lock = made.leak();
    }
    return *lock;
}

void LUMFileRef::lock()
{
    madeLock().lock();
}

void LUMFileRef::unlock()
{
    madeLock().unlock();
}
