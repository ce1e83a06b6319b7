#pragma once

#include "LUMPlatform/NSExport.h"

#include <cstddef>
#include <functional>
#include <string_view>

/// The name of an operation, interned: two selectors of one text are the same pointer.
///
/// Making one from text costs a look-up in a process-wide table; comparing, copying and hashing cost nothing.
/// Selectors live as long as the process. Threads: any.
///
///     static const NSSelector setTitle("setTitle:");
///     NSSend<void>(track, setTitle, title);
class NS_EXPORT NSSelector {
public:
    constexpr NSSelector() = default; ///< The null selector: its name is empty and nothing answers it.
    explicit NSSelector(std::string_view name);

    std::string_view name() const { return mEntry ? mEntry->name : std::string_view(); }
    /// The number of arguments the name asks for: its colons.
    std::size_t arity() const { return mEntry ? mEntry->arity : 0; }
    explicit operator bool() const { return mEntry != nullptr; }
    friend bool operator==(NSSelector, NSSelector) = default;

    std::size_t hash() const { return mEntry ? mEntry->hash : 0; }

private:
    struct Entry {
        std::string_view name;
        std::size_t arity;
        std::size_t hash;
    };
    friend struct NSSelectorTable;

    const Entry* mEntry = nullptr;
};

template<> struct std::hash<NSSelector> {
    std::size_t operator()(NSSelector selector) const noexcept { return selector.hash(); }
};
