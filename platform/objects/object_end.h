#pragma once

#include <cstdint>

class NSObject;

namespace platform {

/// The order in which objects that end inside other objects' ends are destroyed.
///
/// Destroying a container releases its elements, and so on down. Past a fixed depth the end of an object is
/// put off until the outer ones have unwound, so a list of a million nested arrays needs no more stack than a
/// short one. One per thread; the waiting objects are chained through their own, no longer needed, counts.
class EndQueue {
public:
    static constexpr int kMaxDepth = 100;

    template<typename Destroy, typename Link> void end(const NSObject* object, Destroy destroy, Link link)
    {
        if (mDepth >= kMaxDepth) {
            link(object) = reinterpret_cast<std::uintptr_t>(mWaiting);
            mWaiting = object;
            return;
        }
        ++mDepth;
        destroy(object);
        // Only the outermost end works the queue off: there the stack is empty again.
        while (mDepth == 1 && mWaiting) {
            const NSObject* next = mWaiting;
            mWaiting = reinterpret_cast<const NSObject*>(static_cast<std::uintptr_t>(link(next)));
            destroy(next);
        }
        --mDepth;
    }

private:
    int mDepth = 0;
    const NSObject* mWaiting = nullptr;
};

}
