// Objects whose constructor throws.

#include "LUMPlatform/NSWeak.h"
#include "tests/fixture.h"

#include <stdexcept>

namespace {

/// Refers to itself weakly, as a delegate of its own parts would, and then fails.
struct Stillborn : NSObject {
    explicit Stillborn(NSWeak<NSObject>& self)
    {
        self = NSWeak<NSObject>(NSShare<NSObject>(this));
        throw std::runtime_error("stillborn");
    }
};

struct NSObjectConstructionTest : ObjectTest { };

TEST_F(NSObjectConstructionTest, PassesOnWhatTheConstructorThrows)
{
    NSWeak<NSObject> self;
    EXPECT_THROW((void)NSMake<Stillborn>(self), std::runtime_error);
    EXPECT_EQ(self.get(), nullptr);
}

TEST_F(NSObjectConstructionTest, LeavesNoWeakReferenceToTheNextObjectInThatPlace)
{
    for (int round = 0; round < 100; ++round) {
        NSWeak<NSObject> self;
        EXPECT_THROW((void)NSMake<Stillborn>(self), std::runtime_error);
        auto next = NSMake<NSObject>();
        NSWeak<NSObject> weak(next);
        EXPECT_EQ(weak.get(), next);
        EXPECT_EQ(self.get(), nullptr);
        next = nullptr;
        EXPECT_EQ(weak.get(), nullptr);
    }
}

}
