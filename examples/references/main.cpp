// Holds on to a file while everything around it is renamed and moved, and finds it again by what was stored
// of it.

#include "LUMFoundation/LUMFileManager.h"
#include "LUMFoundation/LUMFileRef.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSError.h"
#include "LUMPlatform/NSKeyedArchiver.h"
#include "LUMPlatform/NSKeyedUnarchiver.h"
#include "LUMPlatform/NSPathUtilities.h"
#include "LUMPlatform/NSUUID.h"

#include <iostream>

namespace {

/// A folder of this run's own, which may have moved by its end; a handle finds it all the same.
class ScratchFolder {
public:
    ScratchFolder()
        : mFolder(LUMFileManager::createFileRefAtPath(mManager,
            NSTemporaryDirectory()->stringByAppendingPathComponent(NSUUID::UUID()->UUIDString()), true))
    {
    }
    ~ScratchFolder()
    {
        if (mFolder)
            mManager->removeItemAtPath(mFolder->path());
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const NSRef<LUMFileRef>& folder() const { return mFolder; }

private:
    const NSRef<NSFileManager> mManager = NSFileManager::defaultManager();
    const NSRef<LUMFileRef> mFolder;
};

/// What happens to the file; false, with the error, when the system does not let it.
bool moveAround(const NSRef<LUMFileRef>& folder, NSRef<NSError>* error)
{
    auto takes = folder->createChildWithName("Takes", true, error);
    auto take = takes ? takes->createChildWithName("Take 1.aif", false, error) : nullptr;
    if (!take)
        return false;
    std::cout << "made      " << take->path() << '\n';

    // An archive of a handle outlives the process.
    auto stored = NSKeyedArchiver::archivedDataWithRootObject(take);

    if (!takes->renameWithName("Best takes", error) || !take->renameWithName("Final.aif", error))
        return false;
    std::cout << "renamed   " << take->path() << '\n';

    auto album = folder->createChildWithName("Album", true, error);
    if (!album
        || !LUMFileManager::moveFileRefWithEnumeratedName(
            NSFileManager::defaultManager(), take, album, take->name(), 100))
        return false;
    std::cout << "moved     " << take->path() << '\n';

    auto found = NSCast<LUMFileRef>(NSKeyedUnarchiver::unarchiveObjectWithData(stored));
    std::cout << "restored  " << (found ? found->path() : "nothing") << '\n';
    return found && found->isEqualTo(take);
}

}

int main()
{
    const ScratchFolder scratch;
    NSRef<NSError> error;
    if (scratch.folder() && moveAround(scratch.folder(), &error))
        return 0;
    std::cerr << "the file was lost: " << error << '\n';
    return 1;
}
