#include "core/compare_objects.h"

#include "LUMPlatform/NSSend.h"

std::int32_t lum::CompareObjectsWithSelector(const NSId& first, const NSId& second, NSSelector selector)
{
    // Deliberate: of a wider result only the low 32 bits are read.
    return NSSend<std::int32_t>(first, selector, second);
}
