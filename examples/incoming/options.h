#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

/// What the command line asks for.
struct Options {
    std::string folder; ///< The drop folder; empty: make one and feed it.
    std::string into; ///< Where results go; empty: beside the drop folder.
    std::size_t jobs = 0; ///< Jobs at a time; 0: one a processor.
    std::size_t count = 0; ///< End after so many files; 0: without end, or as many as are fed.
    bool help = false;
};

/// Null when the words make no sense; then `problem` says why.
std::optional<Options> parseOptions(std::span<char* const> words, std::string& problem);

extern const char* const kUsage;
