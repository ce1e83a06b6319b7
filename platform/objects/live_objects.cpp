#include "platform/objects/live_objects.h"

#include "platform/objects/live_object_counter.h"

namespace platform {

std::atomic<long> LiveObjectCounter::sCount { 0 };

long liveObjectCount() noexcept
{
    return LiveObjectCounter::sCount.load(std::memory_order_acquire);
}

void discountLiveObject() noexcept
{
    LiveObjectCounter::ended();
}

}
