#include "data/digest.h"

#include "tests/data/hex.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <thread>

namespace {

using lum::DigestAlgorithm;

std::string hexDigits(std::span<const std::byte> bytes)
{
    std::u16string text(2 * bytes.size(), u'?');
    lum::writeHexDigits(bytes, text.data());
    return { text.begin(), text.end() };
}

std::string digestText(DigestAlgorithm algorithm, std::string_view text)
{
    std::array<std::byte, lum::digestSize(DigestAlgorithm::SHA1)> digest;
    if (!lum::makeDigest(algorithm, bytesOf(text), digest.data()))
        return "failed";
    return hexDigits(std::span(digest).first(lum::digestSize(algorithm)));
}

struct Case {
    const char* name;
    std::string text;
    const char* md5;
    const char* sha1;
};

// The texts of RFC 1321 and FIPS 180.
const Case kCases[] = {
    { "Nothing", "", "d41d8cd98f00b204e9800998ecf8427e", "da39a3ee5e6b4b0d3255bfef95601890afd80709" },
    { "OneLetter", "a", "0cc175b9c0f1b6a831c399e269772661", "86f7e437faa5a7fce15d1ddcb9eaeaea377667b8" },
    { "ThreeLetters", "abc", "900150983cd24fb0d6963f7d28e17f72", "a9993e364706816aba3e25717850c26c9cd0d89d" },
    { "TwoBlocks", "abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
        "8215ef0796a20bcaaae116d3876c664a", "84983e441c3bd26ebaae4aa1f95129e5e54670f1" },
    { "AMillionLetters", std::string(1000000, 'a'), "7707d6ae4e027c70eea2a935c2296f21",
        "34aa973cd4c4daa4f61eeb2bdbad27316534016f" },
};

class DigestTest : public testing::TestWithParam<Case> { };

TEST_P(DigestTest, IsThePublishedOne)
{
    EXPECT_EQ(digestText(DigestAlgorithm::MD5, GetParam().text), GetParam().md5);
    EXPECT_EQ(digestText(DigestAlgorithm::SHA1, GetParam().text), GetParam().sha1);
}

INSTANTIATE_TEST_SUITE_P(
    Digest, DigestTest, testing::ValuesIn(kCases), [](const auto& param) { return param.param.name; });

TEST(DigestThreadsTest, ManyThreadsMayBeginAtOnce)
{
    std::vector<std::string> results(8);
    std::vector<std::thread> threads;
    for (std::string& result : results)
        threads.emplace_back([&result] {
            for (int i = 0; i < 100; ++i)
                result = digestText(DigestAlgorithm::MD5, "abc") + digestText(DigestAlgorithm::SHA1, "abc");
        });
    for (std::thread& thread : threads)
        thread.join();
    for (const std::string& result : results)
        EXPECT_EQ(result, "900150983cd24fb0d6963f7d28e17f72a9993e364706816aba3e25717850c26c9cd0d89d");
}

std::string sLate;

/// Takes a digest when the thread ends, after whatever the digests keep for a thread is gone.
struct Late {
    ~Late() { sLate = digestText(DigestAlgorithm::MD5, "abc"); }
};

TEST(DigestThreadsTest, WorksWhileTheThreadEnds)
{
    std::thread([] {
        thread_local Late late; // made first, so ended last
        (void)&late;
        digestText(DigestAlgorithm::MD5, "");
    }).join();
    EXPECT_EQ(sLate, "900150983cd24fb0d6963f7d28e17f72");
}

/// A machine that allows approved algorithms only has no MD5 in the context that programs share.
TEST(DigestDeathTest, DoesNotDependOnTheSharedContextOfLibcrypto)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // a new process, in which nothing is fetched yet
    auto digestWithoutMD5 = [] {
        EVP_set_default_properties(nullptr, "fips=yes");
        bool missing = EVP_MD_fetch(nullptr, "MD5", nullptr) == nullptr;
        bool same = digestText(DigestAlgorithm::MD5, "abc") == "900150983cd24fb0d6963f7d28e17f72";
        std::exit(missing && same ? 0 : 1);
    };
    EXPECT_EXIT(digestWithoutMD5(), testing::ExitedWithCode(0), "");
}

TEST(HexDigitsTest, AreLowerCaseAndHighOneFirst)
{
    EXPECT_EQ(hexDigits(unhex("00 1f a0 ff")), "001fa0ff");
}

}
