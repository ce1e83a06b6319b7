#pragma once

#include "LUMPlatform/NSCoder.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "platform/archiving/nesting_depth.h"

#include <vector>

namespace platform {

/// The calls that an unarchiver serves, those inside each other included, and the objects that others may
/// lead back to which it made since the outermost began.
///
/// When a call fails nobody gets these objects. Those that lead back to themselves would keep themselves
/// alive, so all of them let go of what they hold. From then on every call raises.
class DecodingCalls {
public:
    template<typename Decode> auto serve(const Decode& decode)
    {
        if (mHasFailed)
            throw NSException(NSInvalidUnarchiveOperationException, "the unarchiver has raised before");
        if (mDepth == 0)
            mMade.clear();
        const NestingDepth call(mDepth);
        try {
            return decode();
        } catch (...) {
            mHasFailed = true;
            if (mDepth == 1)
                undoAll();
            throw;
        }
    }

    /// What the last call answered cannot be used.
    void fail()
    {
        mHasFailed = true;
        if (mDepth == 0)
            undoAll();
    }
    bool hasFailed() const { return mHasFailed; }

    /// Others may lead back to this object from now on.
    void add(const NSId& object, NSCoder::Undo undo) { mMade.push_back({ object, undo }); }

private:
    struct Made {
        NSId object;
        NSCoder::Undo undo;
    };

    void undoAll()
    {
        const auto made = std::exchange(mMade, {}); // they end together, behind the last that needs another
        for (const Made& each : made)
            each.undo(*each.object);
    }

    std::vector<Made> mMade;
    NSUInteger mDepth = 0;
    bool mHasFailed = false;
};

}
