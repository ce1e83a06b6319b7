#include "LUMFoundation/LUMAbsoluteTimeGetCurrent.h"

#include "core/system_clock.h"

double LUMAbsoluteTimeGetCurrent()
{
    return lum::secondsOfNanoseconds(lum::uptimeNanoseconds());
}
