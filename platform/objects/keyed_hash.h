#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace platform {

/// A hash of bytes that differs from process to process, so that nobody can prepare a file whose keys all
/// have the same one and make dictionaries slow. Not for storing and not for signing. Threads: any. Linear in
/// the bytes, about sixteen of them a nanosecond.
std::uint64_t keyedHash(std::span<const std::byte> bytes);

/// An odd number, chosen anew in each process, for spreading whole numbers over the places of a table: the
/// upper bits of the product are what nobody can foresee.
std::uint64_t hashMultiplier();

}
