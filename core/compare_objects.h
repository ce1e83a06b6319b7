#pragma once

#include "LUMPlatform/NSObject.h"

namespace lum {

/// Sends `selector` (compare: for instance) to `first` with `second`; 0 when `first` is null.
///
/// Of an integer result the low 32 bits count. A floating-point one loses its fraction. Raises
/// NSInvalidArgumentException for a result that is no number, and when `first` does not answer.
std::int32_t CompareObjectsWithSelector(const NSId& first, const NSId& second, NSSelector selector);

}
