#include "platform/objects/keyed_hash.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <set>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

std::uint64_t hashOf(std::string_view text)
{
    return platform::keyedHash(std::as_bytes(std::span(text)));
}

TEST(KeyedHashTest, IsTheSameForTheSameBytes)
{
    const std::string copy = "a text longer than sixteen bytes";
    EXPECT_EQ(hashOf("a text longer than sixteen bytes"), hashOf(copy));
}

TEST(KeyedHashTest, TellsLengthsOfZerosApart)
{
    std::set<std::uint64_t> hashes;
    for (std::size_t length = 0; length < 100; ++length)
        hashes.insert(hashOf(std::string(length, '\0')));
    EXPECT_EQ(hashes.size(), 100u);
}

TEST(KeyedHashTest, ChangesWithEveryByteOfEveryLength)
{
    for (std::size_t length = 1; length < 70; ++length) {
        std::set<std::uint64_t> hashes { hashOf(std::string(length, 'x')) };
        for (std::size_t changed = 0; changed < length; ++changed) {
            std::string text(length, 'x');
            text[changed] = 'y';
            hashes.insert(hashOf(text));
        }
        EXPECT_EQ(hashes.size(), length + 1) << length;
    }
}

RC_GTEST_PROP(KeyedHashTest, NeverReadsBeyondTheBytes, (const std::string& text))
{
    const std::vector<char> exact(text.begin(), text.end()); // whose end a sanitizer watches
    RC_ASSERT(platform::keyedHash(std::as_bytes(std::span(exact))) == hashOf(text));
}

TEST(KeyedHashTest, SpreadsEvenly)
{
    std::vector<int> places(64);
    for (int i = 0; i < 64000; ++i)
        ++places[hashOf("key " + std::to_string(i)) % places.size()];
    EXPECT_GT(*std::ranges::min_element(places), 800);
    EXPECT_LT(*std::ranges::max_element(places), 1200);
}

TEST(KeyedHashTest, TheMultiplierIsOdd)
{
    EXPECT_EQ(platform::hashMultiplier() & 1, 1u);
    EXPECT_EQ(platform::hashMultiplier(), platform::hashMultiplier());
}

/// What the hash of a text is in a process of its own.
[[noreturn]] void printHash()
{
    std::ostringstream text;
    text << hashOf("text") << ' ' << platform::hashMultiplier();
    const std::string line = text.str();
    _exit(write(STDERR_FILENO, line.data(), line.size()) == static_cast<ssize_t>(line.size()) ? 7 : 1);
}

TEST(KeyedHashDeathTest, DiffersFromProcessToProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // starts the program anew
    std::ostringstream here;
    here << hashOf("text") << ' ' << platform::hashMultiplier();
    EXPECT_EXIT(printHash(), testing::ExitedWithCode(7), testing::Not(testing::HasSubstr(here.str())));
}

}
