#include "data/digest.h"

#include <memory>
#include <openssl/evp.h>

namespace lum {

namespace {

/// The algorithms, fetched once: a fetch costs more than the digest of a short text. They come from a library
/// context of our own, because a program or a machine may configure the shared one to offer neither of the
/// two. Both stay until the process ends, as libcrypto's own clean-up runs at no certain time.
struct Algorithms {
    OSSL_LIB_CTX* context = OSSL_LIB_CTX_new();
    EVP_MD* md5 = context ? EVP_MD_fetch(context, "MD5", nullptr) : nullptr;
    EVP_MD* sha1 = context ? EVP_MD_fetch(context, "SHA1", nullptr) : nullptr;
};

EVP_MD* fetched(DigestAlgorithm algorithm)
{
    static const Algorithms algorithms;
    return algorithm == DigestAlgorithm::MD5 ? algorithms.md5 : algorithms.sha1;
}

}

bool makeDigest(DigestAlgorithm algorithm, std::span<const std::byte> bytes, std::byte* digest)
{
    EVP_MD* type = fetched(algorithm);
    auto* out = reinterpret_cast<unsigned char*>(digest);
    return type && EVP_Digest(bytes.data(), bytes.size(), out, nullptr, type, nullptr) == 1;
}

std::string hexDigits(std::span<const std::byte> bytes)
{
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text;
    text.reserve(2 * bytes.size());
    for (std::byte byte : bytes) {
        text += kDigits[std::to_integer<unsigned>(byte >> 4)];
        text += kDigits[std::to_integer<unsigned>(byte & std::byte(15))];
    }
    return text;
}

}
