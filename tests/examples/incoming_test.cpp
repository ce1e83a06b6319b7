#include "tests/examples/incoming_process.h"

#include "LUMFoundation/LUMData_Compression.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSString.h"
#include "tests/temporary_folder.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <sstream>
#include <sys/stat.h>

namespace fs = std::filesystem;
using std::chrono::seconds;

namespace {

constexpr std::uintmax_t kRoom = std::uintmax_t { 3 } << 30;

/// Whether there is a folder in memory that very many files fit into.
bool hasRoomInMemory()
{
    std::error_code problem;
    const fs::space_info space = fs::space("/dev/shm", problem);
    return !problem && space.available >= kRoom && access("/dev/shm", W_OK) == 0;
}

class IncomingTest : public testing::Test {
protected:
    IncomingTest()
    {
        // In memory where that can be: every result is brought to the disk, which takes its time.
        const fs::path base = hasRoomInMemory() ? fs::path("/dev/shm") : fs::temp_directory_path();
        std::string made = (base / "incoming-test-XXXXXX").string();
        mScratch = mkdtemp(made.data());
        fs::create_directory(drop());
        fs::create_directory(temporary());
        setenv("TMPDIR", temporary().c_str(), 1); // of the program
    }
    ~IncomingTest() override { fs::remove_all(mScratch); }

    fs::path drop() const { return mScratch / "drop"; }
    fs::path into() const { return mScratch / "into"; }
    fs::path bundle() const { return into() / "incoming.bundle"; }
    /// The compressed file of a name.
    fs::path result(const std::string& name) const { return resultIn(bundle(), name); }
    static fs::path resultIn(const fs::path& bundle, const std::string& name)
    {
        return bundle / "Contents/Resources/compressed" / (name + ".gz");
    }
    /// Where the source of a name went, whatever the folder of originals is called now.
    fs::path original(const std::string& name) const
    {
        for (const auto& entry : fs::directory_iterator(into()))
            if (entry.path().filename().string().starts_with("originals") && fs::exists(entry.path() / name))
                return entry.path() / name;
        return {};
    }
    fs::path temporary() const { return mScratch / "tmp"; }
    std::string outputFile() const { return (mScratch / "output").string(); }

    std::string output() const { return readFile(outputFile()); }

    void put(const std::string& name, const std::string& content) const
    {
        std::ofstream(drop() / (name + ".partial"), std::ios::binary) << content;
        fs::rename(drop() / (name + ".partial"), drop() / (name + ".complete"));
    }

    static std::string inflated(const fs::path& result)
    {
        auto data = NSData::dataWithContentsOfFile(result.string());
        auto bytes = LUMData_Compression::gzipInflate(data);
        if (!bytes)
            return "(does not inflate)";
        return { static_cast<const char*>(static_cast<const void*>(bytes->bytes().data())), bytes->length() };
    }

    /// Every result that stands under its name inflates, and to what the source holds; a source that was
    /// moved away has a record.
    std::size_t wholeResults() const
    {
        std::size_t whole = 0;
        const fs::path folder = bundle() / "Contents/Resources/compressed";
        if (!fs::exists(folder))
            return whole;
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() != ".gz" || entry.path().filename().string().starts_with("."))
                continue;
            const std::string name = entry.path().stem().string();
            const fs::path moved = original(name);
            const fs::path waiting = drop() / (name + ".complete");
            EXPECT_EQ(inflated(entry.path()), readFile(moved.empty() ? waiting : moved)) << name;
            EXPECT_TRUE(moved.empty() || fs::exists(bundle() / "Contents/Objects" / (name + ".object")))
                << name;
            ++whole;
        }
        return whole;
    }

    /// Whether the inspector finds nothing wrong; what it says comes after the output of the program.
    bool isVerified() const
    {
        const std::string report = (mScratch / "report").string();
        IncomingProcess inspector(LUM_BUNDLE_PROGRAM, { "verify", bundle().string() }, report);
        const bool isFine = inspector.statusWithin(seconds(300)) == 0;
        std::ofstream(outputFile(), std::ios::app) << readFile(report);
        return isFine;
    }

    static bool appears(const fs::path& path)
    {
        const auto deadline = std::chrono::steady_clock::now() + seconds(60);
        while (!fs::exists(path) && std::chrono::steady_clock::now() < deadline)
            std::this_thread::yield();
        return fs::exists(path);
    }

    fs::path mScratch;
};

TEST_F(IncomingTest, FeedsItselfAndTakesEveryFileIn)
{
    IncomingProcess incoming(
        LUM_INCOMING_PROGRAM, { "--count", "40", "--into", into().string() }, outputFile());
    ASSERT_EQ(incoming.statusWithin(seconds(100)), 0) << output();
    EXPECT_EQ(wholeResults(), 40u);
    EXPECT_NE(output().find("40 files, 0 failed"), std::string::npos) << output();
    EXPECT_NE(output().find("originals renamed to originals-1; the records found 40 of 40 again"),
        std::string::npos)
        << output();
    EXPECT_TRUE(isVerified()) << output();
}

TEST_F(IncomingTest, TakesInWhatLiesThereAndWhatArrives)
{
    put("before", "was there");
    IncomingProcess incoming(
        LUM_INCOMING_PROGRAM, { drop().string(), "--into", into().string(), "--count", "2" }, outputFile());
    put("after", "");
    ASSERT_EQ(incoming.statusWithin(seconds(60)), 0) << output();
    EXPECT_EQ(inflated(result("before")), "was there");
    EXPECT_EQ(inflated(result("after")), "");
    EXPECT_TRUE(fs::is_empty(drop()));
}

TEST_F(IncomingTest, LeavesUnfinishedFilesAlone)
{
    std::ofstream(drop() / "growing.partial") << "half";
    put("whole", "all");
    IncomingProcess incoming(
        LUM_INCOMING_PROGRAM, { drop().string(), "--into", into().string(), "--count", "1" }, outputFile());
    ASSERT_EQ(incoming.statusWithin(seconds(60)), 0) << output();
    EXPECT_TRUE(fs::exists(drop() / "growing.partial"));
    EXPECT_FALSE(fs::exists(result("growing")));
}

TEST_F(IncomingTest, FailsWhenAFileFailed)
{
    fs::create_directory(drop() / "folder.complete"); // no file to read
    IncomingProcess incoming(
        LUM_INCOMING_PROGRAM, { drop().string(), "--into", into().string(), "--count", "1" }, outputFile());
    EXPECT_EQ(incoming.statusWithin(seconds(60)), 1);
    EXPECT_NE(output().find("FAILED folder"), std::string::npos) << output();
}

TEST_F(IncomingTest, StopsCleanlyOnCtrlC)
{
    IncomingProcess incoming(LUM_INCOMING_PROGRAM, { "--into", into().string() }, outputFile());
    const auto deadline = std::chrono::steady_clock::now() + seconds(60);
    while (!fs::exists(into() / "originals") || fs::is_empty(into() / "originals")) {
        ASSERT_LT(std::chrono::steady_clock::now(), deadline) << output();
        std::this_thread::yield();
    }
    incoming.signal(SIGINT);
    EXPECT_EQ(incoming.statusWithin(seconds(60)), 130) << output();
    for (const auto& entry : fs::recursive_directory_iterator(bundle()))
        EXPECT_FALSE(entry.path().filename().string().starts_with(".")) << entry.path() << " is half written";
    EXPECT_GT(wholeResults(), 0u);
    EXPECT_TRUE(isVerified()) << output();
    EXPECT_TRUE(fs::is_empty(temporary())) << "the folder it fed is left behind";
}

TEST_F(IncomingTest, StoresBesideAFolderThatIsGivenWithASlash)
{
    put("a", "text");
    IncomingProcess incoming(LUM_INCOMING_PROGRAM, { drop().string() + "//", "--count", "1" }, outputFile());
    EXPECT_EQ(incoming.statusWithin(seconds(60)), 0) << output();
    EXPECT_EQ(inflated(resultIn(drop().string() + "-done/incoming.bundle", "a")), "text");
    EXPECT_TRUE(fs::is_empty(drop()));
}

TEST_F(IncomingTest, RefusesMoreJobsThanAnyMachineRuns)
{
    IncomingProcess incoming(LUM_INCOMING_PROGRAM, { drop().string(), "--jobs", "1000000000" }, outputFile());
    EXPECT_EQ(incoming.statusWithin(seconds(30)), 2);
    EXPECT_NE(output().find("--jobs takes a number from 1 to 1000"), std::string::npos);
}

TEST_F(IncomingTest, LeavesOnlyWholeResultsWhenKilledAtAnyPoint)
{
    std::minstd_rand random(42);
    for (int round = 0; round < 12; ++round) {
        for (int file = 0; file < 20; ++file)
            put(std::to_string(round) + "-" + std::to_string(file),
                std::string(1 + random() % 200'000, static_cast<char>('a' + file % 26)));
        IncomingProcess incoming(
            LUM_INCOMING_PROGRAM, { drop().string(), "--into", into().string() }, outputFile());
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 60'000)); // the point of the kill
        incoming.signal(SIGKILL);
        ASSERT_TRUE(incoming.statusWithin(seconds(30)));
        if (fs::exists(into()))
            wholeResults();
    }
    const std::size_t waiting =
        static_cast<std::size_t>(std::distance(fs::directory_iterator(drop()), fs::directory_iterator()));
    if (waiting > 0) {
        IncomingProcess last(LUM_INCOMING_PROGRAM,
            { drop().string(), "--into", into().string(), "--count", std::to_string(waiting) }, outputFile());
        ASSERT_EQ(last.statusWithin(seconds(60)), 0) << output();
    }
    EXPECT_EQ(wholeResults(), 12u * 20u) << "what a kill cut off is taken in by the next run";
    EXPECT_TRUE(isVerified()) << output();
}

TEST_F(IncomingTest, LosesAndDoublesNoneOfVeryManyFiles)
{
    constexpr int kFiles = LUM_INCOMING_MANY;
    IncomingProcess incoming(LUM_INCOMING_PROGRAM,
        { drop().string(), "--into", into().string(), "--count", std::to_string(kFiles) }, outputFile());
    for (int file = 0; file < kFiles; ++file)
        put(std::to_string(file), std::to_string(file));
    ASSERT_EQ(incoming.statusWithin(seconds(1000)), 0) << output();
    std::multiset<std::string> reported;
    std::istringstream lines(output());
    for (std::string line; std::getline(lines, line) && !line.empty();)
        reported.insert(line.substr(0, line.find(' ')));
    reported.erase("taking");
    EXPECT_EQ(reported.size(), static_cast<std::size_t>(kFiles));
    for (int file = 0; file < kFiles; ++file) {
        ASSERT_EQ(reported.count(std::to_string(file)), 1u) << file;
        ASSERT_EQ(inflated(result(std::to_string(file))), std::to_string(file));
    }
    EXPECT_TRUE(fs::is_empty(drop()));
}

TEST_F(IncomingTest, AddsToTheBundleOfAnEarlierRun)
{
    for (const char* name : { "first", "second" }) {
        put(name, name);
        IncomingProcess incoming(LUM_INCOMING_PROGRAM,
            { drop().string(), "--into", into().string(), "--count", "1" }, outputFile());
        ASSERT_EQ(incoming.statusWithin(seconds(60)), 0) << output();
    }
    EXPECT_EQ(wholeResults(), 2u);
    EXPECT_TRUE(fs::exists(into() / "originals-1/first"));
    EXPECT_TRUE(fs::exists(into() / "originals-2/second"));
    EXPECT_TRUE(isVerified()) << output();
}

TEST_F(IncomingTest, KeepsBothOfTwoFilesOfOneName)
{
    for (const char* content : { "one", "two" }) {
        put("take.txt", content);
        IncomingProcess incoming(LUM_INCOMING_PROGRAM,
            { drop().string(), "--into", into().string(), "--count", "1" }, outputFile());
        ASSERT_EQ(incoming.statusWithin(seconds(60)), 0) << output();
    }
    EXPECT_EQ(inflated(result("take.txt")), "one");
    EXPECT_EQ(inflated(result("take.ad782ecdac77.txt")), "two"); // its SHA-1 begins so
    EXPECT_EQ(readFile((into() / "originals-1/take.txt").string()), "one");
    EXPECT_EQ(readFile((into() / "originals-2/take.ad782ecdac77.txt").string()), "two");
    EXPECT_TRUE(isVerified()) << output();
}

TEST_F(IncomingTest, KeepsBothOfTwoFilesOfOneNameThatArriveInOneRun)
{
    IncomingProcess incoming(
        LUM_INCOMING_PROGRAM, { drop().string(), "--into", into().string(), "--count", "2" }, outputFile());
    put("take", "one");
    ASSERT_TRUE(appears(into() / "originals/take")) << output();
    put("take", "two");
    ASSERT_EQ(incoming.statusWithin(seconds(60)), 0) << output();
    EXPECT_EQ(inflated(result("take")), "one");
    EXPECT_EQ(inflated(result("take.ad782ecdac77")), "two");
    EXPECT_EQ(readFile(original("take").string()), "one");
    EXPECT_EQ(readFile(original("take.ad782ecdac77").string()), "two");
}

TEST_F(IncomingTest, TakesInAgainWhatIsTheSame)
{
    for (const char* originals : { "originals-1/take", "originals-2/take" }) {
        put("take", "one");
        IncomingProcess incoming(LUM_INCOMING_PROGRAM,
            { drop().string(), "--into", into().string(), "--count", "1" }, outputFile());
        ASSERT_EQ(incoming.statusWithin(seconds(60)), 0) << output();
        EXPECT_TRUE(fs::exists(into() / originals));
    }
    EXPECT_EQ(wholeResults(), 1u);
    EXPECT_TRUE(isVerified()) << output();
}

TEST_F(IncomingTest, ReplacesNothingAmongTheOriginals)
{
    put("take", "new");
    fs::create_directories(into() / "originals");
    std::ofstream(into() / "originals/take") << "somebody's";
    IncomingProcess incoming(
        LUM_INCOMING_PROGRAM, { drop().string(), "--into", into().string(), "--count", "1" }, outputFile());
    EXPECT_EQ(incoming.statusWithin(seconds(60)), 1) << output();
    EXPECT_EQ(readFile((into() / "originals/take").string()), "somebody's");
    EXPECT_EQ(readFile((drop() / "take.complete").string()), "new");
}

TEST_F(IncomingTest, LosesNoFileThatReplacesOneInWork)
{
    put("take", std::string(std::size_t { 30 } << 20, 'a'));
    IncomingProcess incoming(
        LUM_INCOMING_PROGRAM, { drop().string(), "--into", into().string(), "--count", "1" }, outputFile());
    ASSERT_TRUE(appears(bundle())) << output();
    put("take", "new");
    const auto status = incoming.statusWithin(seconds(60));
    if (fs::exists(drop() / "take.complete"))
        EXPECT_EQ(readFile((drop() / "take.complete").string()), "new");
    else
        EXPECT_EQ(inflated(result("take")), "new");
    EXPECT_TRUE(status == 0 || output().find("was replaced while it was taken in") != std::string::npos)
        << output();
}

TEST_F(IncomingTest, TakesInFromAnotherVolume)
{
    std::string elsewhere = "/var/tmp/incoming-test-XXXXXX"; // on a disk
    ASSERT_TRUE(mkdtemp(elsewhere.data()));
    struct stat here, there;
    ASSERT_EQ(stat(mScratch.c_str(), &here) + stat(elsewhere.c_str(), &there), 0);
    if (here.st_dev != there.st_dev) {
        put("take", "text");
        IncomingProcess incoming(
            LUM_INCOMING_PROGRAM, { drop().string(), "--into", elsewhere, "--count", "1" }, outputFile());
        EXPECT_EQ(incoming.statusWithin(seconds(60)), 0) << output();
        EXPECT_EQ(inflated(resultIn(fs::path(elsewhere) / "incoming.bundle", "take")), "text");
        EXPECT_EQ(readFile((fs::path(elsewhere) / "originals-1/take").string()), "text");
        EXPECT_TRUE(fs::is_empty(drop()));
    }
    fs::remove_all(elsewhere);
    if (here.st_dev == there.st_dev)
        GTEST_SKIP() << "this machine has one volume";
}

TEST_F(IncomingTest, TakesInNamesWithEveryCharacter)
{
    const std::string names[] = { ".hidden", "a b#c?d%41&=+;:'\"", "\xc3\xa4\xe2\x99\xab", "a.b.c",
        std::string(240, 'x') };
    for (const std::string& name : names)
        put(name, name);
    IncomingProcess incoming(
        LUM_INCOMING_PROGRAM, { drop().string(), "--into", into().string(), "--count", "5" }, outputFile());
    ASSERT_EQ(incoming.statusWithin(seconds(60)), 0) << output();
    for (const std::string& name : names)
        EXPECT_EQ(inflated(result(name)), name);
    EXPECT_TRUE(isVerified()) << output();
}

TEST_F(IncomingTest, ExplainsItselfWhenTheWordsMakeNoSense)
{
    for (const char* word : { "--jobs", "--count=0", "--no-such" }) {
        IncomingProcess incoming(LUM_INCOMING_PROGRAM, { word }, outputFile());
        EXPECT_EQ(incoming.statusWithin(seconds(30)), 2) << word;
        EXPECT_NE(output().find("incoming [FOLDER]"), std::string::npos);
    }
}

}
