#pragma once

#include "LUMPlatform/NSError.h"

#include <cstdint>

/// A block of memory that may move while it is not locked: a pointer to the pointer to its bytes. `*handle`
/// is where they are now, and is never null, also when there are none.
///
/// Blocks of this library never move by themselves; the state is kept for those who save and restore it. Null
/// is no block: its size is 0, and the other functions do nothing with it. Threads: one at a time for a
/// block.
///
///     Handle handle = nullptr;
///     if (PtrToHand("abc", &handle, 3) == 0) {
///         std::fwrite(*handle, 1, static_cast<std::size_t>(GetHandleSize(handle)), stdout);
///         DisposeHandle(handle);
///     }
using Handle = char**;

/// No memory for a block.
inline constexpr OSStatus memFullErr = -108;
/// There is no block.
inline constexpr OSStatus nilHandleErr = -109;

/// The bit of the state that tells that a block is locked.
inline constexpr std::int8_t kHandleLockedMask = static_cast<std::int8_t>(0x80);

/// A block of that many bytes, which hold anything; the caller disposes of it. Null when there is no memory,
/// and for a negative size.
NS_EXPORT Handle NewHandle(NSInteger size);

/// Stores a new block with a copy of `size` bytes in `handle`; the caller disposes of it. Answers 0; or
/// memFullErr, with null stored, when there is no memory; or -50 for a negative size, and for null `bytes`
/// with a size, and for a null `handle`.
NS_EXPORT OSStatus PtrToHand(const void* bytes, Handle* handle, NSInteger size);

/// Gives the memory back.
NS_EXPORT void DisposeHandle(Handle handle);

/// How many bytes the block has; 0 for null.
NS_EXPORT NSInteger GetHandleSize(Handle handle);

/// Locks the block, so that it does not move. Locking twice is locking once.
NS_EXPORT void HLock(Handle handle);
/// The state of the block, for HSetState; nilHandleErr for null.
NS_EXPORT std::int8_t HGetState(Handle handle);
/// Gives the block a state that HGetState answered.
NS_EXPORT void HSetState(Handle handle, std::int8_t state);
