#include "data/digest.h"

#include <openssl/evp.h>
#include <utility>

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

/// The context of this thread: making one costs as much as the digest of a few bytes. The pointer has no
/// destructor of its own, so that it is still good, and null, in what runs at the very end of a thread.
EVP_MD_CTX* threadContext()
{
    thread_local EVP_MD_CTX* context = nullptr;
    struct Owner {
        Owner() { context = EVP_MD_CTX_new(); }
        ~Owner() { EVP_MD_CTX_free(std::exchange(context, nullptr)); }
    };
    thread_local Owner owner;
    return context;
}

}

bool makeDigest(DigestAlgorithm algorithm, std::span<const std::byte> bytes, std::byte* digest)
{
    EVP_MD* type = fetched(algorithm);
    auto* out = reinterpret_cast<unsigned char*>(digest);
    EVP_MD_CTX* context = type ? threadContext() : nullptr;
    if (!context)
        return type && EVP_Digest(bytes.data(), bytes.size(), out, nullptr, type, nullptr) == 1;
    return EVP_DigestInit_ex2(context, type, nullptr) == 1
        && EVP_DigestUpdate(context, bytes.data(), bytes.size()) == 1
        && EVP_DigestFinal_ex(context, out, nullptr) == 1;
}

void writeHexDigits(std::span<const std::byte> bytes, char16_t* text)
{
    constexpr const char16_t* kDigits = u"0123456789abcdef";
    for (std::byte byte : bytes) {
        *text++ = kDigits[std::to_integer<unsigned>(byte >> 4)];
        *text++ = kDigits[std::to_integer<unsigned>(byte & std::byte(15))];
    }
}

}
