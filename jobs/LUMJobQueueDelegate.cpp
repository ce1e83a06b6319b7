#include "LUMFoundation/LUMJobQueueDelegate.h"

#include "LUMFoundation/LUMJobQueue.h"

std::span<const NSMethod> LUMJobQueueDelegate::methods()
{
    static constexpr NSMethod kMethods[] = {
        NSMethodOf<"jobQueue:didStartJob:", &LUMJobQueueDelegate::jobQueueDidStartJob>(),
        NSMethodOf<"jobQueue:didPauseJob:", &LUMJobQueueDelegate::jobQueueDidPauseJob>(),
        NSMethodOf<"jobQueue:didResumeJob:", &LUMJobQueueDelegate::jobQueueDidResumeJob>(),
        NSMethodOf<"jobQueue:didCancelJob:", &LUMJobQueueDelegate::jobQueueDidCancelJob>(),
        NSMethodOf<"jobQueue:didCompleteJob:", &LUMJobQueueDelegate::jobQueueDidCompleteJob>(),
    };
    return kMethods;
}
