#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

// What the operations on data are compared with. Each makes a block of malloc that the caller owns, as ours
// do.

struct FreeBlock {
    void operator()(void* block) const { std::free(block); }
};
using Block = std::unique_ptr<void, FreeBlock>;

std::array<unsigned char, 20> md5ByLibcrypto(const std::vector<std::byte>& bytes);
std::array<unsigned char, 20> sha1ByLibcrypto(const std::vector<std::byte>& bytes);
std::uint32_t zlibCRC32(const std::vector<std::byte>& bytes);
Block deflatedByZlib(const std::vector<std::byte>& bytes);
Block deflatedByGzip(const std::vector<std::byte>& bytes);
/// As one does it who does not know the size of the result: from one and a half times the input in steps of
/// half of it.
Block inflatedByZlib(const std::vector<std::byte>& bytes);
/// Into a buffer of `size` bytes, which is just enough.
Block inflatedByZlibAtOnce(const std::vector<std::byte>& bytes, std::size_t size);

Block plainBase32Encode(const std::vector<std::byte>& bytes);
Block plainBase32Decode(const std::string& text);
Block plainCOBSEncode(const std::vector<std::byte>& bytes);
Block plainCOBSDecode(const std::vector<std::byte>& bytes);

/// A row for a function of Python's module base64; none where there is no Python.
void addPython(const char* path, const char* function, std::size_t size);
