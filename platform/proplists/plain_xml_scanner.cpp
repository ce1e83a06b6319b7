#include "platform/proplists/plain_xml_scanner.h"

#include <array>
#include <charconv>

namespace platform {
namespace {

enum class Kind : unsigned char { Plain, NotAscii, Tag, Entity, Bracket, Other };

/// What a byte of text is. A carriage return, which XML reads as a line feed, is for the other reader.
constexpr auto kKinds = [] {
    std::array<Kind, 256> kinds {};
    for (std::size_t byte = 0; byte < kinds.size(); ++byte)
        kinds[byte] = byte >= 0x80 ? Kind::NotAscii : byte >= ' ' ? Kind::Plain : Kind::Other;
    kinds['\t'] = kinds['\n'] = Kind::Plain;
    kinds[']'] = Kind::Bracket;
    kinds['<'] = Kind::Tag;
    kinds['&'] = Kind::Entity;
    return kinds;
}();

struct Entity {
    std::string_view name;
    char character;
};
constexpr Entity kEntities[] = {
    { "lt;", '<' },
    { "gt;", '>' },
    { "amp;", '&' },
    { "quot;", '"' },
    { "apos;", '\'' },
};

}

void PlainXmlScanner::takeHead()
{
    take("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    skipSpace();
    take("<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
         "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">");
    skipSpace();
}

std::optional<std::string_view> PlainXmlScanner::text()
{
    mIsAscii = true;
    mReplaced.clear();
    bool isReplaced = false;
    for (std::size_t at = 0; at < mRest.size(); ++at) {
        switch (kKinds[static_cast<unsigned char>(mRest[at])]) {
        case Kind::Plain:
            break;
        case Kind::NotAscii:
            mIsAscii = false;
            break;
        case Kind::Tag: {
            std::string_view text = mRest.substr(0, at);
            mRest.remove_prefix(at);
            if (!isReplaced)
                return text;
            return mReplaced += text;
        }
        case Kind::Entity:
            mReplaced += mRest.substr(0, at);
            mRest.remove_prefix(at + 1);
            if (!appendEntity())
                return std::nullopt;
            isReplaced = true;
            at = static_cast<std::size_t>(-1); // of what is left
            break;
        case Kind::Bracket: // XML allows no "]]>" in a text
            if (mRest.substr(at).starts_with("]]>"))
                return std::nullopt;
            break;
        case Kind::Other:
            return std::nullopt;
        }
    }
    return std::nullopt;
}

/// The named ones, and those of characters of ASCII by decimal number; others are rare.
bool PlainXmlScanner::appendEntity()
{
    for (const Entity& entity : kEntities)
        if (take(entity.name)) {
            mReplaced += entity.character;
            return true;
        }
    if (!take("#"))
        return false;
    unsigned code = 0;
    const char* end = mRest.data() + mRest.size();
    const auto [stop, problem] = std::from_chars(mRest.data(), end, code);
    const bool isCharacter = code >= ' ' || code == '\t' || code == '\n' || code == '\r';
    if (problem != std::errc() || stop == end || *stop != ';' || code >= 0x80 || !isCharacter)
        return false;
    mReplaced += static_cast<char>(code);
    mRest.remove_prefix(static_cast<std::size_t>(stop + 1 - mRest.data()));
    return true;
}

}
