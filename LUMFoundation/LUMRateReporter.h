#pragma once

#include "LUMFoundation/LUMExport.h"
#include "LUMPlatform/NSObject.h"

#include <array>
#include <cstdint>

/// How many moments of its window a LUMRateReporter remembers.
inline constexpr std::int32_t kNumSamples = 20;

/// Turns a total that grows (bytes copied, items done) into a rate per second, averaged over a sliding
/// window.
///
/// Feed it the total whenever that is at hand, often or seldom: the reporter keeps one value for each
/// twentieth of the window, and the rate is the growth across what it keeps. It knows no target and no time
/// left.
///
///     auto reporter = LUMRateReporter::initWithTimeWindow(5); // seconds
///     reporter->addSample(bytesCopied);
///     double bytesPerSecond = reporter->rate();
///
/// Time comes from a monotonic clock, so setting the system's time changes no rate. Threads: one at a time.
class LUM_EXPORT LUMRateReporter : public NSObject {
public:
    static const NSClass& classObject();

    /// Makes a reporter with a window of that many seconds. Any value is taken: with 0 the reporter follows
    /// the latest total and the rate divides by 0.
    /// Selector: initWithTimeWindow:
    static NSRef<LUMRateReporter> initWithTimeWindow(double window);

    /// Takes the total as it is now. A total less than a twentieth of the window after the last one kept is
    /// dropped; one that comes later stands for every twentieth passed meanwhile.
    /// Selector: addSample:
    void addSample(double total);

    /// Total units per second; 0 until two totals have been kept. It is a little low, most so while the first
    /// window fills, because n kept values lie n - 1 steps apart but count as n steps.
    /// Selector: rate
    double rate() const;

protected:
    explicit LUMRateReporter(double window);
    ~LUMRateReporter() override;

    /// The time in seconds, of which only differences matter; a subclass may count another time than the
    /// clock's. A time that goes back is not repaired: nothing is kept, and the newest kept total becomes the
    /// one as many steps before.
    virtual double currentTime() const;

private:
    std::array<double, kNumSamples> _samples {}; // the ring of kept totals
    double _window;
    double _samplingInterval; // seconds
    double _lastSampleInserted = 0;
    NSUInteger _mostRecentIndex = 0; // of the newest in the ring
    NSUInteger _totalSamples = 0; // steps since the first total; not the number of calls
};
