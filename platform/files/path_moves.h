#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Where folders went, learned from objects that were found elsewhere: a good guess for all others that were
/// below them, when many references ask after one folder was renamed, or many files moved together.
class PathMoves {
public:
    /// An object that was at one path is at the other now. What both have in common at their ends has not
    /// changed; before it a folder got another path, or the object another folder.
    void note(std::string_view from, std::string_view to);
    /// Where an object that was at `path` may be, by the newest move first.
    std::vector<std::string> guesses(std::string_view path) const;

private:
    static constexpr std::size_t kKept = 16;

    struct Move {
        std::string from;
        std::string to;
        bool operator==(const Move&) const = default;
    };
    std::vector<Move> mMoves; // the newest first
};

}
