#include "LUMFoundation/LUMRateReporter.h"

#include "LUMPlatform/NSClass.h"

#include <chrono>

namespace {

constexpr NSUInteger kRing = kNumSamples;

/// How many slots to move on after `elapsed` sampling intervals. Time that cannot be told (not-a-number, from
/// an interval of 0) and an infinity fill the ring; time that goes back moves back, as far as a word holds.
NSInteger stepsAfter(double elapsed)
{
    if (elapsed >= double { kNumSamples } || elapsed != elapsed)
        return kNumSamples;
    return NSSaturated<NSInteger>(elapsed);
}

}

LUMRateReporter::LUMRateReporter(double window) : mWindow(window), mSamplingInterval(window / kNumSamples) { }

LUMRateReporter::~LUMRateReporter() = default;

const NSClass& LUMRateReporter::classObject()
{
    static constexpr NSMethod kMethods[] = {
        NSMethodOf<"addSample:", &LUMRateReporter::addSample>(),
        NSMethodOf<"rate", &LUMRateReporter::rate>(),
    };
    static const NSClass& type = NSClass::define("LUMRateReporter", &NSObject::classObject(), kMethods);
    return type;
}

NSRef<LUMRateReporter> LUMRateReporter::initWithTimeWindow(double window)
{
    return NSMake<LUMRateReporter>(window);
}

double LUMRateReporter::currentTime() const
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void LUMRateReporter::addSample(double total)
{
    const double now = currentTime();
    if (mTotalSamples == 0) {
        mSamples[0] = total;
        mTotalSamples = 1;
        mLastSampleInserted = now;
        return;
    }
    const NSInteger steps = stepsAfter((now - mLastSampleInserted) / mSamplingInterval);
    // Deliberate: a sample within the interval is dropped. Time that went back moves the ring back and stores
    // nothing; the unsigned sums wrap.
    const auto unsignedSteps = static_cast<NSUInteger>(steps);
    mTotalSamples += unsignedSteps;
    if (steps > 0) {
        mLastSampleInserted = now;
        for (NSUInteger step = 1; step <= unsignedSteps; ++step)
            mSamples[(mMostRecentIndex + step) % kRing] = total;
    }
    mMostRecentIndex = (mMostRecentIndex + unsignedSteps) % kRing;
}

double LUMRateReporter::rate() const
{
    if (mTotalSamples == 0)
        return 0;
    const double newest = mSamples[mMostRecentIndex];
    // Deliberate: both divisions count the values kept, not the steps between them, so the rate is a little
    // low.
    if (mTotalSamples > kRing)
        return (newest - mSamples[(mMostRecentIndex + 1) % kRing]) / mWindow;
    return (newest - mSamples[0]) / (static_cast<double>(mTotalSamples) * mSamplingInterval);
}
