#include "benchmarks/data_peers.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <openssl/evp.h>
#include <zlib.h>

namespace {

z_stream streamOf(const std::vector<std::byte>& bytes)
{
    z_stream stream {};
    stream.next_in = const_cast<Bytef*>(reinterpret_cast<const Bytef*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    return stream;
}

Block makeRoom(z_stream& stream, std::size_t size)
{
    Block block(std::malloc(size));
    stream.next_out = static_cast<Bytef*>(block.get());
    stream.avail_out = static_cast<uInt>(size);
    return block;
}

std::array<unsigned char, 20> digestOf(const std::vector<std::byte>& bytes, const EVP_MD* type)
{
    std::array<unsigned char, 20> digest;
    EVP_Digest(bytes.data(), bytes.size(), digest.data(), nullptr, type, nullptr);
    return digest;
}

Block deflated(const std::vector<std::byte>& bytes, int windowBits)
{
    z_stream stream = streamOf(bytes);
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, windowBits, 8, Z_DEFAULT_STRATEGY);
    Block block = makeRoom(stream, deflateBound(&stream, bytes.size()));
    deflate(&stream, Z_FINISH);
    deflateEnd(&stream);
    return block;
}

/// What a script prints; 0 when it prints no number.
double secondsToldBy(const std::string& script)
{
    double seconds = 0;
    if (FILE* pipe = popen(script.c_str(), "r")) {
        if (std::fscanf(pipe, "%lf", &seconds) != 1)
            seconds = 0;
        pclose(pipe);
    }
    return seconds;
}

}

std::array<unsigned char, 20> md5ByLibcrypto(const std::vector<std::byte>& bytes)
{
    static EVP_MD* const kMD5 = EVP_MD_fetch(nullptr, "MD5", nullptr);
    return digestOf(bytes, kMD5);
}

std::array<unsigned char, 20> sha1ByLibcrypto(const std::vector<std::byte>& bytes)
{
    static EVP_MD* const kSHA1 = EVP_MD_fetch(nullptr, "SHA1", nullptr);
    return digestOf(bytes, kSHA1);
}

std::uint32_t zlibCRC32(const std::vector<std::byte>& bytes)
{
    const auto* from = reinterpret_cast<const Bytef*>(bytes.data());
    return static_cast<std::uint32_t>(crc32(0, from, static_cast<uInt>(bytes.size())));
}

Block deflatedByZlib(const std::vector<std::byte>& bytes)
{
    return deflated(bytes, 15);
}

Block deflatedByGzip(const std::vector<std::byte>& bytes)
{
    return deflated(bytes, 15 + 16);
}

Block inflatedByZlib(const std::vector<std::byte>& bytes)
{
    z_stream stream = streamOf(bytes);
    inflateInit2(&stream, 15 + 32);
    std::size_t size = bytes.size() + bytes.size() / 2;
    void* block = std::malloc(size);
    for (;;) {
        stream.next_out = static_cast<Bytef*>(block) + stream.total_out;
        stream.avail_out = static_cast<uInt>(size - stream.total_out);
        if (inflate(&stream, Z_SYNC_FLUSH) != Z_OK)
            break;
        if (stream.total_out == size)
            block = std::realloc(block, size += bytes.size() / 2);
    }
    inflateEnd(&stream);
    return Block(std::realloc(block, stream.total_out));
}

Block inflatedByZlibAtOnce(const std::vector<std::byte>& bytes, std::size_t size)
{
    z_stream stream = streamOf(bytes);
    inflateInit2(&stream, 15 + 32);
    Block block = makeRoom(stream, size);
    inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    return block;
}

Block plainBase32Encode(const std::vector<std::byte>& bytes)
{
    static const char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZ234567";
    const auto* in = reinterpret_cast<const unsigned char*>(bytes.data());
    Block block(std::malloc((bytes.size() * 8 + 4) / 5 + 8));
    auto* out = static_cast<char*>(block.get());
    for (std::size_t i = 0; i < bytes.size(); i += 5, out += 8) {
        unsigned char b[5] = {};
        for (std::size_t k = 0; k < 5 && i + k < bytes.size(); ++k)
            b[k] = in[i + k];
        out[0] = kAlphabet[b[0] >> 3];
        out[1] = kAlphabet[(b[0] & 7) << 2 | b[1] >> 6];
        out[2] = kAlphabet[(b[1] >> 1) & 31];
        out[3] = kAlphabet[(b[1] & 1) << 4 | b[2] >> 4];
        out[4] = kAlphabet[(b[2] & 15) << 1 | b[3] >> 7];
        out[5] = kAlphabet[(b[3] >> 2) & 31];
        out[6] = kAlphabet[(b[3] & 3) << 3 | b[4] >> 5];
        out[7] = kAlphabet[b[4] & 31];
    }
    return block;
}

Block plainBase32Decode(const std::string& text)
{
    Block block(std::malloc(text.size() * 5 / 8 + 8));
    auto* out = static_cast<unsigned char*>(block.get());
    unsigned bits = 0;
    int count = 0;
    for (char c : text) {
        unsigned digit;
        if (c >= 'A' && c <= 'Z')
            digit = static_cast<unsigned>(c - 'A');
        else if (c >= 'a' && c <= 'z')
            digit = static_cast<unsigned>(c - 'a');
        else if (c >= '2' && c <= '7')
            digit = static_cast<unsigned>(c - '2' + 26);
        else
            return nullptr;
        bits = bits << 5 | digit;
        count += 5;
        if (count >= 8) {
            count -= 8;
            *out++ = static_cast<unsigned char>(bits >> count);
        }
    }
    return block;
}

Block plainCOBSEncode(const std::vector<std::byte>& bytes)
{
    Block block(std::malloc(bytes.size() + bytes.size() / 254 + 2));
    auto* out = static_cast<unsigned char*>(block.get());
    unsigned char* code = out++;
    unsigned char count = 1;
    for (std::byte byte : bytes) {
        if (byte != std::byte(0)) {
            *out++ = static_cast<unsigned char>(byte);
            ++count;
        }
        if (byte == std::byte(0) || count == 255) {
            *code = count;
            code = out++;
            count = 1;
        }
    }
    *code = count;
    *out = 0;
    return block;
}

Block plainCOBSDecode(const std::vector<std::byte>& bytes)
{
    Block block(std::malloc(bytes.size()));
    auto* out = static_cast<unsigned char*>(block.get());
    const auto* in = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto* end = in + bytes.size();
    while (in < end) {
        unsigned char code = *in++;
        for (unsigned char i = 1; i < code && in < end; ++i)
            *out++ = *in++;
        if (code < 255)
            *out++ = 0;
    }
    return block;
}

void addPython(const char* path, const char* function, std::size_t size)
{
    static const bool kThere = std::system("python3 -c 'import base64' >/dev/null 2>&1") == 0;
    if (!kThere)
        return;
    std::string name = std::string(path) + "/python_" + function + "/" + std::to_string(size);
    std::string encode(function);
    encode.replace(3, 2, "en");
    std::string script = "python3 -c 'import base64, random, time, timeit\n"
                         "data = random.Random(1).randbytes("
        + std::to_string(size) + ")\n" + (encode == function ? "" : "data = base64." + encode + "(data)\n")
        + "timer = timeit.Timer(lambda: base64." + function + "(data), timer=time.process_time)\n"
        + "count = timer.autorange()[0]\nprint(min(timer.repeat(3, count)) / count)'";
    auto seconds = std::make_shared<double>(0); // Python repeats for itself; once is enough
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
        if (*seconds == 0)
            *seconds = secondsToldBy(script);
        if (*seconds == 0)
            state.SkipWithError("python3 told no time");
        for (auto _ : state)
            state.SetIterationTime(*seconds);
    })->UseManualTime();
}
