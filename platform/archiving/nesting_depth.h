#pragma once

#include "LUMPlatform/NSTypes.h"

namespace platform {

/// One level of nesting while it exists.
class NestingDepth {
public:
    explicit NestingDepth(NSUInteger& depth) : mDepth(depth) { ++mDepth; }
    ~NestingDepth() { --mDepth; }
    NestingDepth(const NestingDepth&) = delete;
    NestingDepth& operator=(const NestingDepth&) = delete;

private:
    NSUInteger& mDepth;
};

}
