#include "LUMPlatform/NSWorkspace.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSImage.h"
#include "LUMPlatform/NSNotificationCenter.h"
#include "LUMPlatform/NSString.h"
#include "platform/files/system_path.h"
#include "platform/files/trash.h"
#include "platform/objects/live_objects.h"

namespace {

/// Null for what is no plain name.
NSRef<NSString> plainName(const NSId& file)
{
    const auto name = NSCast<NSString>(file);
    const bool isPlain = name && name->length() > 0
        && name->characters().find(u'/') == std::u16string_view::npos && !name->isEqualToString(".")
        && !name->isEqualToString("..");
    return isPlain ? name : nullptr;
}

bool recycle(const NSString& source, const NSId& file)
{
    const auto name = plainName(file);
    const std::string path =
        name ? platform::systemPath(source.stringByAppendingPathComponent(name)) : std::string();
    return !path.empty()
        && platform::trashItem(platform::TrashSystem::real(), platform::TreeSystem::real(), path) == 0;
}

constexpr NSMethod kMethods[] = {
    NSMethodOf<"notificationCenter", &NSWorkspace::notificationCenter>(),
    NSMethodOf<"noteFileSystemChanged:", &NSWorkspace::noteFileSystemChanged>(),
    NSMethodOf<"iconForFile:", &NSWorkspace::iconForFile>(),
    NSMethodOf<"iconForFileType:", &NSWorkspace::iconForFileType>(),
    NSMethodOf<"performFileOperation:source:destination:files:tag:", &NSWorkspace::performFileOperation>(),
};

}

const NSStringConstant NSWorkspaceRecycleOperation("recycle");

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

bool NSWorkspace::performFileOperation(const NSRef<NSString>& operation, const NSRef<NSString>& source,
    const NSRef<NSString>& /*destination*/, const NSRef<NSArray>& files, NSInteger* tag)
{
    bool isDone = operation && operation->isEqualToString(NSWorkspaceRecycleOperation) && source
        && source->length() > 0 && files;
    if (isDone) {
        for (const NSId& file : *files)
            isDone = recycle(*source, file) && isDone;
    }
    if (tag)
        *tag = isDone ? 0 : -1;
    return isDone;
}
