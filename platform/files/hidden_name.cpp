#include "platform/files/hidden_name.h"

#include <atomic>
#include <cstdint>
#include <random>

namespace platform {

namespace {

constexpr std::size_t kMaxName = 255;

}

std::string hiddenNameFor(const std::string& name)
{
    static std::atomic<std::uint64_t> number { std::random_device {}() };
    const std::string mark = "." + std::to_string(number.fetch_add(0x9E3779B97F4A7C15) >> 16) + ".tmp";
    return "." + name.substr(0, kMaxName - 1 - mark.size()) + mark;
}

}
