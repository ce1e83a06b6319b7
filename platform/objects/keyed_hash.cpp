#include "platform/objects/keyed_hash.h"

#include <chrono>
#include <cstring>
#include <exception>
#include <random>

namespace platform {

namespace {

__extension__ using Wide = unsigned __int128;

struct Key {
    std::uint64_t first;
    std::uint64_t second;
    std::uint64_t third;
};

std::uint64_t randomNumber()
{
    try {
        std::random_device device;
        return std::uint64_t { device() } << 32 | device();
    } catch (const std::exception&) { // a system without randomness: what differs from run to run has to do
        return static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    }
}

const Key& key()
{
    static const Key key { randomNumber(), randomNumber(), randomNumber() };
    return key;
}

/// Both halves of the product in one: each bit of the result depends on all bits of both.
std::uint64_t folded(std::uint64_t a, std::uint64_t b)
{
    const Wide product = Wide { a } * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

/// The number in the first `count` bytes, eight at most.
std::uint64_t numberAt(const std::byte* bytes, std::size_t count = sizeof(std::uint64_t))
{
    std::uint64_t number = 0;
    std::memcpy(&number, bytes, count);
    return number;
}

}

std::uint64_t keyedHash(std::span<const std::byte> bytes)
{
    constexpr std::size_t kHalf = sizeof(std::uint64_t);
    constexpr std::size_t kStep = 2 * kHalf;
    const Key& secret = key();
    std::uint64_t hash = secret.first ^ bytes.size();
    const std::byte* rest = bytes.data();
    std::size_t left = bytes.size();
    for (; left > kStep; rest += kStep, left -= kStep)
        hash = folded(numberAt(rest) ^ secret.second, numberAt(rest + kHalf) ^ hash);
    const std::uint64_t low = left >= kHalf ? numberAt(rest) : left > 0 ? numberAt(rest, left) : 0;
    const std::uint64_t high = left > kHalf ? numberAt(rest + kHalf, left - kHalf) : 0;
    return folded(folded(low ^ secret.second, high ^ hash), secret.third);
}

std::uint64_t hashMultiplier()
{
    static const std::uint64_t multiplier = randomNumber() | 1;
    return multiplier;
}

}
