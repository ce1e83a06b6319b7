#pragma once

#include "LUMPlatform/NSWeak.h"
#include "platform/objects/mutex.h"

namespace lum {

/// A delegate, not owned, that any thread may replace while others report to it.
template<typename Protocol> class DelegateSlot {
public:
    /// A reference that keeps the delegate alive; null when none is set or it has ended.
    NSRef<Protocol> get() const
    {
        platform::MutexLock lock(mLock);
        return mDelegate.get();
    }
    void set(const NSRef<Protocol>& delegate)
    {
        NSWeak<Protocol> weak = delegate;
        platform::MutexLock lock(mLock);
        std::swap(mDelegate, weak);
    }

private:
    mutable platform::Mutex mLock;
    NSWeak<Protocol> mDelegate NS_GUARDED_BY(mLock);
};

}
