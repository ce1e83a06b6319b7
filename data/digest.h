#pragma once

#include <cstddef>
#include <span>

namespace lum {

enum class DigestAlgorithm {
    MD5,
    SHA1,
};

constexpr std::size_t digestSize(DigestAlgorithm algorithm)
{
    return algorithm == DigestAlgorithm::MD5 ? 16 : 20;
}

/// Writes the digestSize(algorithm) bytes of the digest. Any thread. False only when libcrypto has no memory.
[[nodiscard]] bool makeDigest(DigestAlgorithm algorithm, std::span<const std::byte> bytes, std::byte* digest);

/// Writes two lower-case digits for each byte, the high one first.
void writeHexDigits(std::span<const std::byte> bytes, char16_t* text);

}
