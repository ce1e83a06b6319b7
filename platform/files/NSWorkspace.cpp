#include "LUMPlatform/NSWorkspace.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSNotificationCenter.h"
#include "LUMPlatform/NSString.h"
#include "platform/objects/live_objects.h"

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"notificationCenter", &NSWorkspace::notificationCenter>(),
    NSMethodOf<"noteFileSystemChanged:", &NSWorkspace::noteFileSystemChanged>(),
};

}

NSWorkspace::NSWorkspace() : mNotificationCenter(NSMake<NSNotificationCenter>()) { }

NSWorkspace::~NSWorkspace() = default;

const NSClass& NSWorkspace::classObject()
{
    static const NSClass& type = NSClass::define("NSWorkspace", &NSObject::classObject(), kMethods);
    return type;
}

NSRef<NSWorkspace> NSWorkspace::sharedWorkspace()
{
    static NSWorkspace* const workspace = [] {
        auto made = NSMake<NSWorkspace>();
        platform::discountLiveObject(); // its centre, which lives as long
        return platform::makeImmortal(made);
    }();
    return NSShare(workspace);
}

NSRef<NSNotificationCenter> NSWorkspace::notificationCenter() const
{
    return mNotificationCenter;
}

void NSWorkspace::noteFileSystemChanged(const NSRef<NSString>& /*path*/) { }
