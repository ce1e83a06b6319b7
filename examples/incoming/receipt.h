#pragma once

#include <cstdint>
#include <string>

/// What became of one file.
struct Receipt {
    std::string name; ///< Without folder and without the extension of finished files.
    std::uint64_t size = 0;
    std::uint64_t stored = 0; ///< Bytes of the compressed result.
    std::uint32_t crc32 = 0;
    std::string md5;
    std::string sha1;
    double seconds = 0;
    std::string failure; ///< Empty when all went well.
};
