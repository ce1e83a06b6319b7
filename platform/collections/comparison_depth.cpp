#include "platform/collections/comparison_depth.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

namespace platform {

namespace {

thread_local int tDepth = 0;

}

ComparisonDepth::ComparisonDepth()
{
    if (tDepth >= kMax)
        throw NSException(NSInvalidArgumentException, "collections are nested too deep to be compared");
    ++tDepth;
}

ComparisonDepth::~ComparisonDepth()
{
    --tDepth;
}

}
