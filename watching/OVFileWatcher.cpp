#include "LUMFoundation/OVFileWatcher.h"

// Deliberate: the texts begin with the name of a class and word the changes in their own way.
constinit const NSStringConstant OVFileWatcherRenameNotification("OVKQueueFileRenamedNotification");
constinit const NSStringConstant OVFileWatcherWriteNotification("OVKQueueFileWrittenToNotification");
constinit const NSStringConstant OVFileWatcherDeleteNotification("OVKQueueFileDeletedNotification");
constinit const NSStringConstant OVFileWatcherAttributeChangeNotification(
    "OVKQueueFileAttributesChangedNotification");
constinit const NSStringConstant OVFileWatcherSizeIncreaseNotification(
    "OVKQueueFileSizeIncreasedNotification");
constinit const NSStringConstant OVFileWatcherLinkCountChangeNotification(
    "OVKQueueFileLinkCountChangedNotification");
constinit const NSStringConstant OVFileWatcherAccessRevocationNotification(
    "OVKQueueFileAccessRevocationNotification");
