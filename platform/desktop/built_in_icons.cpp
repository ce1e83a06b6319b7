#include "platform/desktop/built_in_icons.h"

#include <array>
#include <string_view>

namespace platform {

namespace {

constexpr std::size_t kCells = 16; // on each side; a cell is two by two pixels
constexpr std::size_t kCellSide = 2;
using Drawing = std::array<std::string_view, kCells>;

constexpr Drawing kFile = {
    "                ",
    "   #######      ",
    "   #.....##     ",
    "   #.....#-#    ",
    "   #.....####   ",
    "   #........#   ",
    "   #.------.#   ",
    "   #........#   ",
    "   #.------.#   ",
    "   #........#   ",
    "   #.------.#   ",
    "   #........#   ",
    "   #.------.#   ",
    "   #........#   ",
    "   ##########   ",
    "                ",
};

constexpr Drawing kFolder = {
    "                ",
    "                ",
    "                ",
    " ######         ",
    " #oooo######### ",
    " #oooooooooooo# ",
    " #oooooooooooo# ",
    " #------------# ",
    " #oooooooooooo# ",
    " #oooooooooooo# ",
    " #oooooooooooo# ",
    " #oooooooooooo# ",
    " #oooooooooooo# ",
    " ############## ",
    "                ",
    "                ",
};

constexpr Drawing kApplication = {
    "                ",
    "                ",
    " ############## ",
    " #oooooooooooo# ",
    " #oooooooooooo# ",
    " ############## ",
    " #............# ",
    " #.#..........# ",
    " #..#.........# ",
    " #...#........# ",
    " #..#.........# ",
    " #.#...####...# ",
    " #............# ",
    " ############## ",
    "                ",
    "                ",
};

constexpr Drawing kUnknown = {
    "                ",
    "   #######      ",
    "   #.....##     ",
    "   #.....#-#    ",
    "   #.....####   ",
    "   #........#   ",
    "   #...##...#   ",
    "   #..#..#..#   ",
    "   #.....#..#   ",
    "   #....#...#   ",
    "   #...#....#   ",
    "   #........#   ",
    "   #...#....#   ",
    "   #........#   ",
    "   ##########   ",
    "                ",
};

struct Colour {
    unsigned char red, green, blue, opacity;
};

constexpr Colour colourOf(char cell)
{
    switch (cell) {
    case '#':
        return { 0x5E, 0x5C, 0x64, 0xFF };
    case '.':
        return { 0xFF, 0xFF, 0xFF, 0xFF };
    case '-':
        return { 0xC0, 0xBF, 0xBC, 0xFF };
    case 'o':
        return { 0x99, 0xC1, 0xF1, 0xFF };
    default:
        return { 0, 0, 0, 0 };
    }
}

std::shared_ptr<const Pixels> painted(const Drawing& drawing)
{
    constexpr std::size_t kSide = kCells * kCellSide;
    Pixels pixels { kSide, kSide, {} };
    pixels.bytes.reserve(kSide * kSide * 4);
    for (std::size_t y = 0; y < kSide; ++y) {
        for (std::size_t x = 0; x < kSide; ++x) {
            const Colour colour = colourOf(drawing[y / kCellSide][x / kCellSide]);
            for (unsigned char part : { colour.red, colour.green, colour.blue, colour.opacity })
                pixels.bytes.push_back(std::byte { part });
        }
    }
    return std::make_shared<const Pixels>(std::move(pixels));
}

}

std::shared_ptr<const Pixels> builtInIcon(BuiltInIcon kind)
{
    static const auto& icons = *new const std::array { painted(kFile), painted(kFolder),
        painted(kApplication), painted(kUnknown) }; // never destroyed: icons are asked for until the very end
    return icons[static_cast<std::size_t>(kind)];
}

}
