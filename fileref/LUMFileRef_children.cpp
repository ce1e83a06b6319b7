#include "LUMFoundation/LUMFileRefEnumerator.h"

#include "LUMPlatform/NSArray.h"
#include "core/status_error.h"
#include "core/statuses.h"
#include "fileref/child_walk.h"

using lum::fail;

NSRef<NSArray> LUMFileRef::childrenError(NSRef<NSError>* error) const
{
    if (!isDirectory())
        return nullptr;
    std::vector<NSId> children;
    FSIterator iterator;
    OSStatus status = FSOpenIterator(mFileRef, kFSIterateFlat, iterator);
    if (status == 0) {
        lum::Child child;
        while ((status = lum::nextChild(iterator, child)) == 0)
            if (!child.isHidden)
                children.emplace_back(std::move(child.fileRef));
    }
    if (status != kFSNoMoreItems)
        fail(error, status);
    return NSArray::arrayWithObjects(std::move(children));
}

NSRef<LUMFileRefEnumerator> LUMFileRef::childEnumerator() const
{
    return LUMFileRefEnumerator::initWithFileRef(NSShare(const_cast<LUMFileRef*>(this)));
}

NSRef<LUMFileRef> LUMFileRef::createChildWithName(
    const NSRef<NSString>& name, bool asDirectory, NSRef<NSError>* error) const
{
    if (!isDirectory())
        return nullptr;
    const std::u16string_view characters = name ? name->characters() : std::u16string_view();
    FSRef made;
    if (const OSStatus status = asDirectory ? FSCreateDirectoryUnicode(mFileRef, characters, &made)
                                            : FSCreateFileUnicode(mFileRef, characters, &made))
        return fail(error, status);
    return fileRefWithFSRef(made, error);
}

NSRef<LUMFileRef> LUMFileRef::childWithName(const NSRef<NSString>& name, NSRef<NSError>* error) const
{
    if (!isDirectory())
        return fail(error, lum::kStatusNoFolder);
    const auto path = this->path();
    if (!name || !path)
        return fail(error, name ? lum::kStatusNotFound : lum::kStatusBadParameter);
    return fileRefWithPath(path->stringByAppendingPathComponent(name), error);
}

NSRef<LUMFileRef> LUMFileRef::createChildIfNeededWithName(
    const NSRef<NSString>& name, bool asDirectory, NSRef<NSError>* error) const
{
    const auto child = childWithName(name);
    return child ? child : createChildWithName(name, asDirectory, error);
}
