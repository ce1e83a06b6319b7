#include "LUMFoundation/LUMIncomingFolderWatcher.h"

#include "LUMFoundation/OVKQueue.h"
#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSDelayedPerforming.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSFileManager.h"
#include "LUMPlatform/NSNotificationCenter.h"
#include "LUMPlatform/NSNumber.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSThreadPerformAdditions.h"

constinit const NSStringConstant LUMIncomingFileNotification("LUMIncomingFileNotification");

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"path", &LUMIncomingFolderWatcher::path>(),
    NSMethodOf<"createFolderIfNeeded", &LUMIncomingFolderWatcher::createFolderIfNeeded>(),
    NSMethodOf<"watcher:receivedNotification:forPath:",
        &LUMIncomingFolderWatcher::watcherReceivedNotification>(),
    NSMethodOf<"scanFolder", &LUMIncomingFolderWatcher::scanFolder>(),
};

NSSelector scanFolderSelector()
{
    static const NSSelector selector("scanFolder");
    return selector;
}

}

const NSClass& LUMIncomingFolderWatcher::classObject()
{
    static const NSClass& type =
        NSClass::define("LUMIncomingFolderWatcher", &NSObject::classObject(), kMethods);
    return type;
}

NSRef<LUMIncomingFolderWatcher> LUMIncomingFolderWatcher::initWithFolder(const NSRef<NSString>& folderPath,
    const NSRef<NSString>& completedFileType, const NSRef<NSString>& incompleteFileType)
{
    auto watcher = NSMake<LUMIncomingFolderWatcher>(folderPath, completedFileType, incompleteFileType);
    if (!watcher->createFolderIfNeeded())
        return nullptr;
    watcher->_kqueue = OVKQueue::init();
    if (watcher->_kqueue) {
        watcher->_kqueue->setDelegate(watcher);
        watcher->_kqueue->addPath(folderPath);
    }
    NSDelayedPerforming::performSelector(watcher, scanFolderSelector(), nullptr, 0);
    return watcher;
}

LUMIncomingFolderWatcher::LUMIncomingFolderWatcher(const NSRef<NSString>& folderPath,
    const NSRef<NSString>& completedFileType, const NSRef<NSString>& incompleteFileType)
    : _completedFileType(completedFileType), _incompleteFileType(incompleteFileType), _folderPath(folderPath)
{
}

LUMIncomingFolderWatcher::~LUMIncomingFolderWatcher()
{
    // Somebody else may hold the queue, which would go on sending to it.
    if (_kqueue)
        _kqueue->setDelegate(nullptr);
}

NSRef<NSString> LUMIncomingFolderWatcher::path() const
{
    return _folderPath;
}

bool LUMIncomingFolderWatcher::createFolderIfNeeded() const
{
    if (!_folderPath)
        return true;
    const auto manager = NSFileManager::defaultManager();
    const auto components = _folderPath->stringByStandardizingPath()->pathComponents();
    // Deliberate: the first component is taken to be there.
    NSRef<NSString> prefix = components->count() ? components->objectAtIndex<NSString>(0) : nullptr;
    for (NSUInteger i = 1; i < components->count(); ++i) {
        prefix = prefix->stringByAppendingPathComponent(components->objectAtIndex<NSString>(i));
        bool isDirectory = false;
        if (manager->fileExistsAtPath(prefix, &isDirectory)) {
            if (!isDirectory)
                return false;
        } else if (!manager->createDirectoryAtPath(prefix, false)) {
            return false;
        }
    }
    return true;
}

void LUMIncomingFolderWatcher::watcherReceivedNotification(
    const NSId& /*watcher*/, const NSRef<NSString>& /*name*/, const NSRef<NSString>& /*path*/)
{
    NSThreadPerformAdditions::performSelectorOnMainThread(
        NSShare(this), scanFolderSelector(), nullptr, false);
}

void LUMIncomingFolderWatcher::scanFolder()
{
    const auto names = NSFileManager::defaultManager()->contentsOfDirectoryAtPath(_folderPath);
    if (!names)
        return;
    const auto self = NSShare(this); // an observer may let go of the last other reference
    const auto center = NSNotificationCenter::defaultCenter();
    for (const NSId& element : *names) {
        const auto name = NSCast<NSString>(element);
        const auto type = name->pathExtension();
        const bool isCompleted = type->isEqualToString(_completedFileType);
        if (!isCompleted && !type->isEqualToString(_incompleteFileType))
            continue;
        // Deliberate: every scan posts every file, also those of the scan before.
        center->postNotificationName(LUMIncomingFileNotification, self,
            NSDictionary::of({
                { "completed", NSNumber::numberWithBool(isCompleted) },
                { "file", _folderPath->stringByAppendingPathComponent(name) },
            }));
    }
}
