#include "platform/files/path_moves.h"

#include <gtest/gtest.h>

using platform::PathMoves;

namespace {

std::string guess(const PathMoves& moves, std::string_view path)
{
    std::string all;
    for (const std::string& guess : moves.guesses(path))
        all += guess + " ";
    return all;
}

TEST(PathMovesTest, ARenamedFolderIsLearnedFromWhatWasInIt)
{
    PathMoves moves;
    moves.note("/top/a/b/f", "/top/c/b/f");
    EXPECT_EQ(guess(moves, "/top/a/g"), "/top/c/g ");
    EXPECT_EQ(guess(moves, "/top/a/b/c/d"), "/top/c/b/c/d ");
    EXPECT_EQ(guess(moves, "/top/ab/f"), "");
    EXPECT_EQ(guess(moves, "/top/a"), "");
}

TEST(PathMovesTest, FilesThatMovedTogetherAreLearnedFromOne)
{
    PathMoves moves;
    moves.note("/in/1", "/in/sorted/1");
    EXPECT_EQ(guess(moves, "/in/2"), "/in/sorted/2 ");
    moves.note("/a/b/f", "/f");
    EXPECT_EQ(guess(moves, "/a/b/g"), "/g ");
}

TEST(PathMovesTest, ARenameOfTheObjectItselfTellsNothing)
{
    PathMoves moves;
    moves.note("/a/f", "/a/g");
    moves.note("/a/f", "/b/af");
    moves.note("/f", "/a/f");
    moves.note("/a/f", "/a/f");
    EXPECT_EQ(guess(moves, "/a/h"), "");
}

TEST(PathMovesTest, TextThatIsNoPathTellsNothing)
{
    PathMoves moves;
    moves.note("", "/a/f");
    moves.note("pipe:[1]", "/a/f");
    moves.note("/a/f", "f");
    moves.note("f", "f");
    EXPECT_EQ(guess(moves, "/a/f"), "");
}

TEST(PathMovesTest, TheNewestMoveIsTriedFirst)
{
    PathMoves moves;
    moves.note("/a/f", "/b/f");
    moves.note("/a/f", "/c/f");
    moves.note("/a/g", "/b/g");
    EXPECT_EQ(guess(moves, "/a/h"), "/b/h /c/h ");
}

TEST(PathMovesTest, SixteenAreKept)
{
    PathMoves moves;
    for (int i = 0; i < 20; ++i)
        moves.note("/a/f", "/b" + std::to_string(i) + "/f");
    EXPECT_EQ(moves.guesses("/a/g").size(), 16u);
    EXPECT_EQ(moves.guesses("/a/g").front(), "/b19/g");
}

}
