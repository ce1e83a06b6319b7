#include "LUMFoundation/LUMJobDelegate.h"

#include "LUMFoundation/LUMJob.h"

std::span<const NSMethod> LUMJobDelegate::methods()
{
    static constexpr NSMethod kMethods[] = {
        NSMethodOf<"jobDidStart:", &LUMJobDelegate::jobDidStart>(),
        NSMethodOf<"jobDidPause:", &LUMJobDelegate::jobDidPause>(),
        NSMethodOf<"jobDidResume:", &LUMJobDelegate::jobDidResume>(),
        NSMethodOf<"jobDidComplete:", &LUMJobDelegate::jobDidComplete>(),
        NSMethodOf<"jobDidCancel:", &LUMJobDelegate::jobDidCancel>(),
        NSMethodOf<"jobStateDidChange:", &LUMJobDelegate::jobStateDidChange>(),
    };
    return kMethods;
}
