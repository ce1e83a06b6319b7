#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSNotificationCenter.h"

/// Posting on the main thread, for every notification centre.
///
/// Each returns when all observers have been told, on the main thread: at once, inline, when the caller is on
/// it. What an observer throws is thrown here. A caller for whom the main thread waits deadlocks, and without
/// a main loop (see NSThread) a caller on another thread waits for ever. A null centre does nothing. Threads:
/// any.
///
///     auto center = NSNotificationCenter::defaultCenter(); // on a thread that does the work
///     LUMNotificationCenterCategory::postNotificationNameOnMainThread(center, "TrackDidEnd", track);
namespace LUMNotificationCenterCategory {

/// Posts a notification made of the three. Raises NSInvalidArgumentException for a null name.
/// Selector: postNotificationNameOnMainThread:object:userInfo:; with less
/// postNotificationNameOnMainThread:object: and postNotificationNameOnMainThread:
LUM_EXPORT void postNotificationNameOnMainThread(const NSRef<NSNotificationCenter>& center,
    const NSRef<NSString>& name, const NSId& object = nullptr, const NSRef<NSDictionary>& userInfo = nullptr);

/// Has the centre perform handleMainThreadPosting: on the main thread. Raises NSInvalidArgumentException for
/// a null notification.
/// Selector: postNotificationOnMainThread:
LUM_EXPORT void postNotificationOnMainThread(
    const NSRef<NSNotificationCenter>& center, const NSRef<NSNotification>& notification);

/// Posts the notification here, by the centre's postNotification: what runs on the main thread for the
/// others.
/// Selector: handleMainThreadPosting:
LUM_EXPORT void handleMainThreadPosting(
    const NSRef<NSNotificationCenter>& center, const NSRef<NSNotification>& notification);

}
