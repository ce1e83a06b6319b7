#pragma once

#include "platform/objects/live_objects.h"

#include <gtest/gtest.h>

/// The base of all fixtures: every test is a leak test. As many objects exist after a test as before it,
/// constants that live as long as the process aside.
class ObjectTest : public testing::Test {
protected:
    ObjectTest() : mLiveBefore(platform::liveObjectCount()) { }
    ~ObjectTest() override
    {
        EXPECT_EQ(platform::liveObjectCount(), mLiveBefore) << "objects leaked, or ended twice";
    }

private:
    long mLiveBefore;
};
