#pragma once

#include "LUMFoundation/LUMExport.h"

#include <cstdint>

/// The minor number of a system of version 10.x, for instance 6 for 10.6.3; -1 for every other system.
///
/// On Linux the version is the release of the running kernel, so the answer is -1 until there is a kernel 10.
/// A minor number is remembered for the life of the process; -1 is not, and each call asks the system again.
/// Threads: any.
///
///     bool hasNewPanel = LUMOSVersion() >= 6;
extern "C" LUM_EXPORT std::int32_t LUMOSVersion();
