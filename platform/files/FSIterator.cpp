#include "LUMPlatform/FSIterator.h"

#include "platform/files/folder_listing.h"
#include "platform/values/errno_status.h"

using platform::kStatusBadParameter;
using platform::kStatusNotFound;

FSIterator::FSIterator() = default;
FSIterator::FSIterator(FSIterator&&) noexcept = default;
FSIterator& FSIterator::operator=(FSIterator&&) noexcept = default;
FSIterator::~FSIterator() = default;

OSStatus FSOpenIterator(const FSRef& folder, std::uint32_t flags, FSIterator& iterator)
{
    if (flags != kFSIterateFlat)
        return kStatusBadParameter;
    if (!folder)
        return kStatusNotFound;
    return platform::statusFromErrno(-platform::FolderListing::open(*folder.node(), iterator.mListing));
}

OSStatus FSGetCatalogInfoBulk(FSIterator& iterator, FSRef& item, std::string_view* name)
{
    if (!iterator.mListing)
        return kStatusBadParameter;
    platform::NodeRef made;
    std::string_view found;
    const int result = iterator.mListing->next(made, found);
    if (result <= 0)
        return result == 0 ? kFSNoMoreItems : platform::statusFromErrno(-result);
    item = FSRef(std::move(made));
    if (name)
        *name = found;
    return 0;
}

OSStatus FSCloseIterator(FSIterator& iterator)
{
    if (!iterator.mListing)
        return kStatusBadParameter;
    iterator.mListing = nullptr;
    return 0;
}
