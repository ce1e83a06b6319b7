#include "LUMFoundation/LUMFileRefEnumerator.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "fileref/child_walk.h"

const NSClass& LUMFileRefEnumerator::classObject()
{
    static const NSClass& type = NSClass::define("LUMFileRefEnumerator", &NSEnumerator::classObject(), {});
    return type;
}

LUMFileRefEnumerator::LUMFileRefEnumerator(const NSRef<LUMFileRef>& fileRef) : mFileRef(fileRef) { }

LUMFileRefEnumerator::~LUMFileRefEnumerator() = default;

NSRef<LUMFileRefEnumerator> LUMFileRefEnumerator::initWithFileRef(const NSRef<LUMFileRef>& fileRef)
{
    if (!fileRef)
        return nullptr;
    auto enumerator = NSMake<LUMFileRefEnumerator>(fileRef);
    const OSStatus status = FSOpenIterator(*fileRef->fsRef(), kFSIterateFlat, enumerator->iterator);
    return status == 0 ? enumerator : nullptr;
}

NSRef<NSArray> LUMFileRefEnumerator::allObjects()
{
    // Deliberate: the whole folder, and not what is left of the walk.
    return mFileRef->childrenError();
}

NSId LUMFileRefEnumerator::nextObject()
{
    lum::Child child;
    NSRef<LUMFileRef> inHand;
    while (lum::nextChild(iterator, child) == 0) {
        inHand = std::move(child.fileRef);
        if (!child.isHidden)
            break;
    }
    // Deliberate: at the end of the folder that is the last hidden entry, handed out once.
    return inHand;
}
