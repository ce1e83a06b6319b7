#pragma once

/// Marks what libLUMFoundation exports; everything else stays hidden.
#define LUM_EXPORT __attribute__((visibility("default")))
