#pragma once

#include "LUMFoundation/LUMExport.h"

/// Seconds since the machine started, to the nanosecond; only differences of two such times mean anything.
///
/// The clock never goes back and does not follow the wall clock when that is set. Time the machine slept is
/// not counted. Threads: any.
///
///     double begun = LUMAbsoluteTimeGetCurrent();
///     copyFiles();
///     double seconds = LUMAbsoluteTimeGetCurrent() - begun;
extern "C" LUM_EXPORT double LUMAbsoluteTimeGetCurrent();
