#include "LUMFoundation/LUMRateReporter.h"

#include "LUMPlatform/NSSend.h"
#include "tests/fixture.h"

#include <cmath>
#include <limits>
#include <rapidcheck/gtest.h>

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// A reporter whose time stands still until the test moves it.
class SteppedReporter : public LUMRateReporter {
public:
    double time = 1000;

    void addSampleAt(double when, double total)
    {
        time = when;
        addSample(total);
    }

protected:
    explicit SteppedReporter(double window) : LUMRateReporter(window) { }
    double currentTime() const override { return time; }
};

struct LUMRateReporterTest : ObjectTest {
    NSRef<SteppedReporter> reporter = NSMake<SteppedReporter>(20); // an interval of one second
};

TEST_F(LUMRateReporterTest, AnswersZeroBeforeAnySample)
{
    EXPECT_EQ(reporter->rate(), 0.0);
}

TEST_F(LUMRateReporterTest, AnswersZeroAfterOneSample)
{
    reporter->addSampleAt(0, 500);
    EXPECT_EQ(reporter->rate(), 0.0);
}

TEST_F(LUMRateReporterTest, DeliberatelyDividesByTheValuesKeptNotTheSteps)
{
    reporter->addSampleAt(0, 0);
    reporter->addSampleAt(1, 10);
    EXPECT_EQ(reporter->rate(), 5.0);
}

TEST_F(LUMRateReporterTest, DeliberatelyDropsASampleThatComesWithinAnInterval)
{
    reporter->addSampleAt(0, 0);
    reporter->addSampleAt(0.5, 1000);
    EXPECT_EQ(reporter->rate(), 0.0);
    reporter->addSampleAt(0.999, 2000);
    EXPECT_EQ(reporter->rate(), 0.0);
}

TEST_F(LUMRateReporterTest, MeasuresTheNextIntervalFromTheSampleItKept)
{
    reporter->addSampleAt(0, 0);
    reporter->addSampleAt(1.9, 10); // one interval; the next ends at 2.9
    reporter->addSampleAt(2.8, 99);
    EXPECT_EQ(reporter->rate(), 5.0);
    reporter->addSampleAt(2.9, 30);
    EXPECT_EQ(reporter->rate(), 10.0);
}

TEST_F(LUMRateReporterTest, FillsTheIntervalsOfAPauseWithTheNewTotal)
{
    reporter->addSampleAt(0, 0);
    reporter->addSampleAt(3.7, 40);
    EXPECT_EQ(reporter->rate(), 10.0); // four steps of one second
    reporter->addSampleAt(2.7, 99); // each a step back in the ring
    EXPECT_EQ(reporter->rate(), 40.0 / 3.0);
    reporter->addSampleAt(2.7, 99);
    EXPECT_EQ(reporter->rate(), 40.0 / 2.0);
    reporter->addSampleAt(2.7, 99);
    EXPECT_EQ(reporter->rate(), 0.0); // the first sample of all
}

TEST_F(LUMRateReporterTest, SpansTheWindowOnceTheRingIsFull)
{
    for (int second = 0; second <= 25; ++second)
        reporter->addSampleAt(second, second * 20);
    EXPECT_EQ(reporter->rate(), 19.0); // 19 steps of 20 within a window of 20 seconds
}

TEST_F(LUMRateReporterTest, SpansTheFirstTwentyValuesWithoutTheWindow)
{
    for (int second = 0; second < 20; ++second)
        reporter->addSampleAt(second, second * 20);
    EXPECT_EQ(reporter->rate(), 19.0);
    reporter->addSampleAt(20, 10'000);
    EXPECT_EQ(reporter->rate(), (10'000.0 - 20.0) / 20.0); // the value of the second 0 has gone
}

TEST_F(LUMRateReporterTest, ForgetsAllAfterAPauseOfTheWholeWindow)
{
    for (int second = 0; second < 30; ++second)
        reporter->addSampleAt(second, second * 20);
    reporter->addSampleAt(49, 5'000);
    EXPECT_EQ(reporter->rate(), 0.0);
}

TEST_F(LUMRateReporterTest, ForgetsAllAfterAnEndlessPause)
{
    reporter->addSampleAt(0, 0);
    reporter->addSampleAt(1, 10);
    reporter->addSampleAt(kInfinity, 20);
    EXPECT_EQ(reporter->rate(), 0.0);
}

TEST_F(LUMRateReporterTest, ForgetsAllWhenTimeCannotBeTold)
{
    reporter->addSampleAt(0, 0);
    reporter->addSampleAt(1, 10);
    reporter->addSampleAt(kNaN, 99);
    EXPECT_EQ(reporter->rate(), 0.0);
}

TEST_F(LUMRateReporterTest, FollowsTheLatestTotalWithAWindowOfZero)
{
    auto none = NSMake<SteppedReporter>(0);
    none->addSampleAt(1, 5);
    EXPECT_TRUE(std::isnan(none->rate())); // 0 / 0
    none->addSampleAt(2, 7);
    none->addSampleAt(2, 9); // no time passed: 0 / 0 intervals
    EXPECT_TRUE(std::isnan(none->rate()));
}

TEST_F(LUMRateReporterTest, DeliberatelyGoesBackInTheRingWhenTimeGoesBack)
{
    for (int second = 0; second <= 5; ++second)
        reporter->addSampleAt(second, second * 10);
    reporter->addSampleAt(3, 1'000); // two steps back: the newest is that of the second 3
    EXPECT_EQ(reporter->rate(), 30.0 / 4.0);
    reporter->addSampleAt(6, 100); // one step from the last kept, at the second 5
    EXPECT_EQ(reporter->rate(), 100.0 / 5.0);
}

TEST_F(LUMRateReporterTest, DeliberatelyWrapsTheRingWhenTimeGoesBackBeforeTheFirstSample)
{
    reporter->addSampleAt(10, 500);
    reporter->addSampleAt(8, 1'000);
    // 1 - 2 steps wrap to a huge count, so the ring passes for full: the newest is slot -2 of a 64-bit word,
    // modulo 20, which is 14; nothing was ever stored there nor behind it.
    EXPECT_EQ(reporter->rate(), 0.0);
    reporter->addSampleAt(11, 600); // slot 15
    EXPECT_EQ(reporter->rate(), 0.0); // the count is 0 again
    reporter->addSampleAt(12, 700); // taken as the first, into slot 0
    EXPECT_EQ(reporter->rate(), (600.0 - 700.0) / 1.0);
}

TEST_F(LUMRateReporterTest, TakesAnyWindow)
{
    for (double window : { -20.0, kNaN, kInfinity, -kInfinity, 1e-320, 1e308 }) {
        auto odd = NSMake<SteppedReporter>(window);
        for (double when : { 0.0, 1.0, 1e300, -1e300, kInfinity, -kInfinity, kNaN, 5.0 })
            odd->addSampleAt(when, when);
        (void)odd->rate(); // defined, whatever it is
    }
}

TEST_F(LUMRateReporterTest, TakesAnyTotal)
{
    reporter->addSampleAt(0, 0);
    reporter->addSampleAt(1, kInfinity);
    EXPECT_EQ(reporter->rate(), kInfinity);
    reporter->addSampleAt(2, kNaN);
    EXPECT_TRUE(std::isnan(reporter->rate()));
}

TEST_F(LUMRateReporterTest, FindsItsOwnTime)
{
    auto own = LUMRateReporter::initWithTimeWindow(1000);
    own->addSample(0);
    own->addSample(1'000'000); // far less than 50 seconds later
    EXPECT_EQ(own->rate(), 0.0);
    auto fine = LUMRateReporter::initWithTimeWindow(1e-9);
    fine->addSample(0);
    fine->addSample(10); // far more than a nanosecond later
    EXPECT_EQ(fine->rate(), 0.0); // the whole ring holds 10
}

TEST_F(LUMRateReporterTest, AnswersDynamicCalls)
{
    reporter->addSampleAt(0, 0);
    reporter->time = 1;
    NSSend(reporter, NSSelector("addSample:"), 10);
    EXPECT_EQ(NSSend<double>(reporter, NSSelector("rate")), 5.0);
}

TEST_F(LUMRateReporterTest, KeepsTwentySamples)
{
    EXPECT_EQ(kNumSamples, 20);
}

RC_GTEST_PROP(LUMRateReporterProperty, ASteadyTotalGivesItsRateLessOneStep, ())
{
    const auto perSecond = *rc::gen::inRange(1, 1'000'000);
    const auto seconds = *rc::gen::inRange(1, 200);
    auto reporter = NSMake<SteppedReporter>(20);
    for (int second = 0; second <= seconds; ++second)
        reporter->addSampleAt(second, double { 1 } * second * perSecond);
    const int kept = std::min(seconds + 1, 20);
    RC_ASSERT(std::abs(reporter->rate() - double { 1 } * perSecond * (kept - 1) / kept) < 1e-6);
}

}
