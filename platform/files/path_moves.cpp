#include "platform/files/path_moves.h"

#include <algorithm>

namespace platform {

void PathMoves::note(std::string_view from, std::string_view to)
{
    bool isCut = false;
    while (!from.empty() && !to.empty()) {
        const std::string_view end = from.substr(std::min(from.rfind('/'), from.size()));
        if (end.empty() || !to.ends_with(end))
            break;
        from.remove_suffix(end.size());
        to.remove_suffix(end.size());
        isCut = true;
    }
    if (!isCut || from.empty())
        return; // renamed itself, or moved out of the root, which tells nothing about others
    Move move { std::string(from), std::string(to) };
    std::erase(mMoves, move);
    mMoves.insert(mMoves.begin(), std::move(move));
    if (mMoves.size() > kKept)
        mMoves.pop_back();
}

std::vector<std::string> PathMoves::guesses(std::string_view path) const
{
    std::vector<std::string> guesses;
    for (const Move& move : mMoves)
        if (path.starts_with(move.from) && path.substr(move.from.size()).starts_with('/'))
            guesses.push_back(move.to + std::string(path.substr(move.from.size())));
    return guesses;
}

}
