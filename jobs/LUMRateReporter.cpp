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

LUMRateReporter::LUMRateReporter(double window) : _window(window), _samplingInterval(window / kNumSamples) { }

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
    if (_totalSamples == 0) {
        _samples[0] = total;
        _totalSamples = 1;
        _lastSampleInserted = now;
        return;
    }
    const NSInteger steps = stepsAfter((now - _lastSampleInserted) / _samplingInterval);
    // Deliberate: a sample within the interval is dropped. Time that went back moves the ring back and stores
    // nothing; the unsigned sums wrap.
    const auto unsignedSteps = static_cast<NSUInteger>(steps);
    _totalSamples += unsignedSteps;
    if (steps > 0) {
        _lastSampleInserted = now;
        for (NSUInteger step = 1; step <= unsignedSteps; ++step)
            _samples[(_mostRecentIndex + step) % kRing] = total;
    }
    _mostRecentIndex = (_mostRecentIndex + unsignedSteps) % kRing;
}

double LUMRateReporter::rate() const
{
    if (_totalSamples == 0)
        return 0;
    const double newest = _samples[_mostRecentIndex];
    // Deliberate: both divisions count the values kept, not the steps between them, so the rate is a little
    // low.
    if (_totalSamples > kRing)
        return (newest - _samples[(_mostRecentIndex + 1) % kRing]) / _window;
    return (newest - _samples[0]) / (static_cast<double>(_totalSamples) * _samplingInterval);
}
