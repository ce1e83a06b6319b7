#pragma once

/// Marks what libLUMPlatform exports; everything else stays hidden.
#define NS_EXPORT __attribute__((visibility("default")))
