#include "LUMFoundation/LUMOSVersion.h"

#include "core/kernel_release.h"
#include "core/minor_version_cache.h"

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

namespace {

using Number = std::optional<std::int32_t>;

/// A system of any version, which tells what it was asked.
class FakeVersion final : public lum::SystemVersion {
public:
    FakeVersion(Number major, Number minor) : mMajor(major), mMinor(minor) { }

    Number majorNumber() const override
    {
        mAsked += "major ";
        return mMajor;
    }
    Number minorNumber() const override
    {
        mAsked += "minor ";
        return mMinor;
    }
    std::string takeAsked() { return std::exchange(mAsked, ""); }

private:
    Number mMajor;
    Number mMinor;
    mutable std::string mAsked;
};

struct LUMOSVersionTest : testing::Test {
    lum::MinorVersionCache cache;
};

TEST_F(LUMOSVersionTest, IsTheMinorNumberOfASystemTen)
{
    EXPECT_EQ(cache.minorOf(FakeVersion(10, 6)), 6);
}

TEST_F(LUMOSVersionTest, AsksASystemTenOnce)
{
    FakeVersion system(10, 6);
    cache.minorOf(system);
    EXPECT_EQ(system.takeAsked(), "major minor ");
    EXPECT_EQ(cache.minorOf(system), 6);
    EXPECT_EQ(system.takeAsked(), "");
}

TEST_F(LUMOSVersionTest, RemembersAMinorNumberOfZero)
{
    FakeVersion system(10, 0);
    EXPECT_EQ(cache.minorOf(system), 0);
    system.takeAsked();
    EXPECT_EQ(cache.minorOf(system), 0);
    EXPECT_EQ(system.takeAsked(), "");
}

TEST_F(LUMOSVersionTest, IsMinusOneForAnotherSystemAndAsksItEachTime)
{
    FakeVersion system(11, 6);
    EXPECT_EQ(cache.minorOf(system), -1);
    EXPECT_EQ(cache.minorOf(system), -1);
    EXPECT_EQ(system.takeAsked(), "major major ");
}

TEST_F(LUMOSVersionTest, IsMinusOneWhenTheMajorNumberCannotBeHad)
{
    FakeVersion system(std::nullopt, 6);
    EXPECT_EQ(cache.minorOf(system), -1);
    EXPECT_EQ(system.takeAsked(), "major ");
}

TEST_F(LUMOSVersionTest, IsMinusOneWhenTheMinorNumberCannotBeHadAndAsksAgain)
{
    FakeVersion system(10, std::nullopt);
    EXPECT_EQ(cache.minorOf(system), -1);
    EXPECT_EQ(cache.minorOf(system), -1);
    EXPECT_EQ(system.takeAsked(), "major minor major minor ");
}

TEST_F(LUMOSVersionTest, AnswersAllThreadsAlike)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int call = 0; call < 1000; ++call)
                EXPECT_EQ(cache.minorOf(FakeVersion(10, 6)), 6);
        });
    for (auto& thread : threads)
        thread.join();
}

TEST_F(LUMOSVersionTest, FollowsTheReleaseOfTheKernel)
{
    auto major = lum::systemVersion().majorNumber();
    ASSERT_TRUE(major);
    ASSERT_TRUE(lum::systemVersion().minorNumber());
    EXPECT_EQ(LUMOSVersion(), *major == 10 ? *lum::systemVersion().minorNumber() : -1);
}

struct Release {
    const char* name;
    const char* text;
    Number major;
    Number minor;

    friend std::ostream& operator<<(std::ostream& stream, const Release& row) { return stream << row.text; }
};

class KernelReleaseTest : public testing::TestWithParam<Release> { };

TEST_P(KernelReleaseTest, ReadsTwoNumbers)
{
    auto release = lum::KernelRelease::parse(GetParam().text);
    EXPECT_EQ(release.majorNumber, GetParam().major);
    EXPECT_EQ(release.minorNumber, GetParam().minor);
}

INSTANTIATE_TEST_SUITE_P(All, KernelReleaseTest,
    testing::Values( //
        Release { "Distribution", "6.1.0-18-amd64", 6, 1 }, //
        Release { "Plain", "10.6.3", 10, 6 }, //
        Release { "TwoNumbers", "10.6", 10, 6 }, //
        Release { "Candidate", "10.0-rc3", 10, 0 }, //
        Release { "MajorAlone", "10", 10, std::nullopt }, //
        Release { "DotAtTheEnd", "10.", 10, std::nullopt }, //
        Release { "NoNumber", "linux", std::nullopt, std::nullopt }, //
        Release { "Empty", "", std::nullopt, std::nullopt }, //
        Release { "NegativeMajor", "-10.6", std::nullopt, std::nullopt }, //
        Release { "NegativeMinor", "10.-6", 10, std::nullopt }, //
        Release { "NoMajor", ".6", std::nullopt, std::nullopt }, //
        Release { "LargestMinor", "10.2147483647", 10, 2147483647 }, //
        Release { "TooLargeMinor", "10.2147483648", 10, std::nullopt }, //
        Release { "TooLargeMajor", "99999999999.6", std::nullopt, std::nullopt }),
    [](const auto& row) { return row.param.name; });

}
