#include "fileref/child_walk.h"

namespace lum {

namespace {

bool isHiddenName(const NSRef<NSString>& name)
{
    return name && name->characters().starts_with(u'.');
}

}

OSStatus nextChild(FSIterator& iterator, Child& child)
{
    for (;;) {
        FSRef item;
        std::string_view name;
        if (const OSStatus status = FSGetCatalogInfoBulk(iterator, item, &name))
            return status;
        child.fileRef = LUMFileRef::fileRefWithFSRef(item);
        if (!child.fileRef)
            child.fileRef = LUMFileRef::fileRefWithFSRefResolveAlias(item, false);
        if (!child.fileRef)
            continue;
        // Only what a link leads to has another name than the entry; for the others the path need not be
        // asked.
        const bool isItself = FSCompareFSRefs(item, *child.fileRef->fsRef()) == 0;
        child.isHidden = isItself ? name.starts_with('.') : isHiddenName(child.fileRef->name());
        return 0;
    }
}

}
