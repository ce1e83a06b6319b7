#include "LUMFoundation/LUMData_Base32.h"
#include "LUMFoundation/LUMData_Compression.h"
#include "benchmarks/data_peers.h"

#include <benchmark/benchmark.h>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kMegabyte = 1 << 20;
constexpr std::size_t kCompressible = 256 * kMegabyte;

using Bytes = std::vector<std::byte>;

Bytes noise(std::size_t size)
{
    std::mt19937 random(1);
    Bytes bytes(size);
    for (std::byte& byte : bytes)
        byte = static_cast<std::byte>(random());
    return bytes;
}

/// Words in any order, as text compresses.
Bytes words(std::size_t size)
{
    std::mt19937 random(1);
    std::vector<std::string> list(500);
    for (std::string& word : list)
        for (auto left = 2 + random() % 9; left > 0; --left)
            word += static_cast<char>('a' + random() % 26);
    std::string text;
    while (text.size() < size)
        text += list[random() % list.size()] + ' ';
    auto bytes = std::as_bytes(std::span(text)).first(size);
    return { bytes.begin(), bytes.end() };
}

/// Text, or zeros where a run has to be highly compressible.
Bytes plainText(std::size_t size)
{
    return size == kCompressible ? Bytes(size) : words(size);
}

NSRef<NSData> dataOf(const Bytes& bytes)
{
    return NSData::dataWithBytes(bytes.data(), bytes.size());
}

Bytes bytesOf(const NSRef<NSData>& data)
{
    return { data->bytes().begin(), data->bytes().end() };
}

template<typename Work> void addRow(const std::string& path, const char* subject, std::size_t size, Work work)
{
    std::string name = path + "/" + subject + "/" + std::to_string(size);
    benchmark::RegisterBenchmark(name.c_str(), work);
}

template<typename Input, typename Work> void measure(benchmark::State& state, const Input& input, Work work)
{
    for (auto _ : state) {
        auto result = work(input);
        benchmark::DoNotOptimize(result);
    }
}

/// A row of ours and one of a peer, for the input that `make` gives for the size.
template<typename Make, typename Ours, typename Theirs>
void addPair(const std::string& path, std::size_t size, Make make, Ours ours, const char* peer, Theirs theirs)
{
    addRow(path, "ours", size, [=](benchmark::State& state) { measure(state, dataOf(make(size)), ours); });
    addRow(path, peer, size, [=](benchmark::State& state) { measure(state, make(size), theirs); });
}

void addDigests(std::size_t size)
{
    using namespace LUMData_Compression;
    addPair("MD5", size, noise, md5Digest, "libcrypto", md5ByLibcrypto);
    addPair("SHA1", size, noise, sha1Digest, "libcrypto", sha1ByLibcrypto);
    addPair("CRC32", size, noise, crc32, "zlib", zlibCRC32);
}

void addBase32(std::size_t size)
{
    using namespace LUMData_Compression;
    addPair("Base32Encode", size, noise, base32String, "plain_c", plainBase32Encode);
    addPython("Base32Encode", "b32encode", size);

    auto text = [=] { return base32String(dataOf(noise(size))); };
    addRow("Base32Decode", "ours", size,
        [=](benchmark::State& state) { measure(state, text(), dataWithBase32String); });
    addRow("Base32Decode", "ours_whole", size,
        [=](benchmark::State& state) { measure(state, text(), LUMData_Base32::wholeData); });
    addRow("Base32Decode", "plain_c", size,
        [=](benchmark::State& state) { measure(state, text()->utf8(), plainBase32Decode); });
    addPython("Base32Decode", "b32decode", size);
}

void addCOBS(std::size_t size)
{
    using namespace LUMData_Compression;
    auto frame = [](std::size_t n) { return bytesOf(encodeCOBS(dataOf(noise(n)))); };
    addPair("COBSEncode", size, noise, encodeCOBS, "plain_c", plainCOBSEncode);
    addPython("COBSEncode", "b32encode", size);
    addPython("COBSEncode", "b64encode", size);
    addPair("COBSDecode", size, frame, decodeCOBS, "plain_c", plainCOBSDecode);
    addPython("COBSDecode", "b32decode", size);
    addPython("COBSDecode", "b64decode", size);
}

void addCompression(std::size_t size)
{
    using namespace LUMData_Compression;
    auto zlibStream = [](std::size_t n) { return bytesOf(zlibDeflate(dataOf(plainText(n)))); };
    auto gzipStream = [](std::size_t n) { return bytesOf(gzipDeflate(dataOf(plainText(n)))); };
    addPair("ZlibDeflate", size, plainText, zlibDeflate, "zlib", deflatedByZlib);
    addPair("GzipDeflate", size, plainText, gzipDeflate, "zlib", deflatedByGzip);
    addPair("ZlibInflate", size, zlibStream, zlibInflate, "zlib", inflatedByZlib);
    addPair("GzipInflate", size, gzipStream, gzipInflate, "zlib", inflatedByZlib);

    auto atOnce = [=](const Bytes& bytes) { return inflatedByZlibAtOnce(bytes, size); };
    addRow("ZlibInflate", "zlib_right_size", size,
        [=](benchmark::State& state) { measure(state, zlibStream(size), atOnce); });
    addRow("GzipInflate", "zlib_right_size", size,
        [=](benchmark::State& state) { measure(state, gzipStream(size), atOnce); });
}

const bool kAdded = [] {
    for (std::size_t size : { std::size_t(64), kMegabyte }) {
        addDigests(size);
        addBase32(size);
        addCOBS(size);
    }
    for (std::size_t size : { std::size_t(1024), kMegabyte, kCompressible })
        addCompression(size);
    return true;
}();

}
