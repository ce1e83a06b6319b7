#pragma once

#include "tests/watching/change_names.h"

#include <gtest/gtest.h>
#include <utility>

namespace lum {

inline constexpr std::uint32_t kFileMode = 0100644;
inline constexpr std::uint32_t kFolderMode = 0040755;

inline FileStatus status(std::uint32_t mode)
{
    FileStatus status;
    status.device = 7;
    status.inode = 42;
    status.size = 100;
    status.modified = 1000;
    status.changed = 1000;
    status.links = 1;
    status.mode = mode;
    return status;
}

/// Feeds raw events about one watched object and reads the reports.
class VnodeChangesTest : public testing::Test {
public:
    void watch(std::uint32_t mode) { now = state.status = status(mode); }

    VnodeChangesTest& event(std::uint32_t flags, std::string_view name = {}, std::uint32_t cookie = 0)
    {
        raw.add({ 1, flags, cookie, name });
        return *this;
    }

    std::string report()
    {
        last = vnodeChanges(std::exchange(raw, {}), state, now);
        return changeNames(last.changes);
    }

    std::string afterLoss(WatchFate fate) { return changeNames(vnodeChangesAfterLoss(fate, state, now)); }

    RawChanges raw;
    WatchedState state;
    std::optional<FileStatus> now;
    VnodeReport last;
};

class VnodeChangesOfFileTest : public VnodeChangesTest {
protected:
    void SetUp() override { watch(kFileMode); }
};

}
