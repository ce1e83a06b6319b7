#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace lum {

enum class DigestAlgorithm {
    MD5,
    SHA1,
};

inline constexpr std::size_t kLargestDigest = 20;

constexpr std::size_t digestSize(DigestAlgorithm algorithm)
{
    return algorithm == DigestAlgorithm::MD5 ? 16 : 20;
}

/// Writes the digestSize(algorithm) bytes of the digest. Any thread. False only when libcrypto has no memory.
[[nodiscard]] bool makeDigest(DigestAlgorithm algorithm, std::span<const std::byte> bytes, std::byte* digest);

/// Two lower-case digits a byte, the high one first.
std::string hexDigits(std::span<const std::byte> bytes);

}
