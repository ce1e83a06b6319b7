// A worker thread talks to an object of the main thread: by a proxy, which waits for the answer, and by a
// notification that is posted over there.

#include "LUMFoundation/LUMNotificationCenterCategory.h"
#include "LUMFoundation/OVMainThreadProxy.h"
#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSNotificationCenter.h"
#include "LUMPlatform/NSRunLoop.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSThread.h"

#include <iostream>

namespace {

/// Stands for a window: everything it does, it does on the main thread, so it needs no lock.
class List : public NSObject {
public:
    static const NSClass& classObject()
    {
        static constexpr NSMethod kMethods[] = {
            NSMethodOf<"addRow:", &List::addRow>(),
            NSMethodOf<"workDidEnd:", &List::workDidEnd>(),
        };
        static const NSClass& type = NSClass::define("List", &NSObject::classObject(), kMethods);
        return type;
    }

    NSInteger addRow(const NSRef<NSString>& text)
    {
        std::cout << (NSThread::isMainThread() ? "on the main thread: " : "elsewhere: ") << text << '\n';
        return ++mRows;
    }
    void workDidEnd(const NSRef<NSNotification>& notification)
    {
        std::cout << notification->name() << " after " << mRows << " rows\n";
        NSRunLoop::main()->stop();
    }
    NSInteger rows() const { return mRows; }

private:
    NSInteger mRows = 0;
};

}

int main()
{
    auto list = NSMake<List>();
    auto center = NSNotificationCenter::defaultCenter();
    center->addObserver(list, NSSelector("workDidEnd:"), "WorkDidEnd", nullptr);

    NSThread::detachNewThread([center, proxy = OVMainThreadProxy::mainThreadProxy(list)] {
        static const NSSelector addRow("addRow:");
        NSInteger rows = 0;
        while (rows < 3)
            rows = NSSend<NSInteger>(proxy, addRow, NSString::stringWithFormat("row %d", rows + 1));
        LUMNotificationCenterCategory::postNotificationNameOnMainThread(center, "WorkDidEnd");
    });
    NSRunLoop::main()->run();
    return list->rows() == 3 ? 0 : 1;
}
