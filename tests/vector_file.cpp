#include "tests/vector_file.h"

#include "tests/source_folder.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <ostream>
#include <stdexcept>

namespace vectors {
namespace {

class JsonReader {
public:
    explicit JsonReader(std::string_view literal) : mRest(literal) { }

    Json readAll()
    {
        Json value = read();
        skipSpace();
        if (!mRest.empty())
            fail();
        return value;
    }

private:
    [[noreturn]] void fail() const { throw std::runtime_error("no JSON literal at: " + std::string(mRest)); }

    void skipSpace() { mRest.remove_prefix(std::min(mRest.find_first_not_of(" \t\n\r"), mRest.size())); }

    bool take(std::string_view token)
    {
        if (!mRest.starts_with(token))
            return false;
        mRest.remove_prefix(token.size());
        return true;
    }

    void require(std::string_view token)
    {
        skipSpace();
        if (!take(token))
            fail();
    }

    Json read()
    {
        skipSpace();
        Json value;
        if (take("null"))
            return value;
        if (mRest.starts_with("true") || mRest.starts_with("false")) {
            value.kind = Json::Kind::Bool;
            value.boolean = take("true") || !take("false");
        } else if (mRest.starts_with('"')) {
            value.kind = Json::Kind::Text;
            value.text = readText();
        } else if (take("[")) {
            value.kind = Json::Kind::Array;
            readList("]", [&] { value.items.push_back(read()); });
        } else if (take("{")) {
            value.kind = Json::Kind::Object;
            readList("}", [&] {
                skipSpace();
                std::u16string key = readText();
                require(":");
                value.members.push_back({ std::move(key), read() });
            });
        } else {
            value.kind = Json::Kind::Number;
            const char* end = mRest.data() + mRest.size();
            auto [stop, error] = std::from_chars(mRest.data(), end, value.number);
            if (error != std::errc())
                fail();
            mRest.remove_prefix(static_cast<std::size_t>(stop - mRest.data()));
        }
        return value;
    }

    template<typename ReadItem> void readList(std::string_view close, ReadItem readItem)
    {
        skipSpace();
        if (take(close))
            return;
        do
            readItem();
        while ((skipSpace(), take(",")));
        require(close);
    }

    std::u16string readText()
    {
        require("\"");
        std::u16string text;
        while (!take("\"")) {
            if (mRest.empty())
                fail();
            if (take("\\"))
                text.push_back(readEscape());
            else
                appendUtf8(text);
        }
        return text;
    }

    char16_t readEscape()
    {
        if (mRest.empty())
            fail();
        char letter = mRest.front();
        mRest.remove_prefix(1);
        constexpr std::string_view kLetters = "\"\\/bfnrt";
        constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
        if (std::size_t known = kLetters.find(letter); known != std::string_view::npos)
            return static_cast<unsigned char>(kMeanings[known]);
        unsigned unit = 0;
        if (letter != 'u' || mRest.size() < 4
            || std::from_chars(mRest.data(), mRest.data() + 4, unit, 16).ptr != mRest.data() + 4)
            fail();
        mRest.remove_prefix(4);
        return static_cast<char16_t>(unit);
    }

    /// One character that is not escaped; an own decoder, so that the one under test is not its own judge.
    void appendUtf8(std::u16string& text)
    {
        auto byte = [&](std::size_t i) { return static_cast<unsigned char>(mRest.at(i)); };
        unsigned lead = byte(0);
        std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        unsigned point = length == 1 ? lead : lead & (0x7FU >> length);
        for (std::size_t i = 1; i < length; ++i)
            point = point << 6 | (byte(i) & 0x3FU);
        mRest.remove_prefix(length);
        if (point < 0x10000) {
            text.push_back(static_cast<char16_t>(point));
            return;
        }
        text.push_back(static_cast<char16_t>(0xD7C0 + (point >> 10)));
        text.push_back(static_cast<char16_t>(0xDC00 + (point & 0x3FF)));
    }

    std::string_view mRest;
};

std::vector<std::string> splitAtTabs(std::string_view line)
{
    std::vector<std::string> cells;
    for (;;) {
        std::size_t tab = line.find('\t');
        cells.emplace_back(line.substr(0, tab));
        if (tab == std::string_view::npos)
            return cells;
        line.remove_prefix(tab + 1);
    }
}

}

Json Json::parse(std::string_view literal)
{
    return JsonReader(literal).readAll();
}

std::string Row::cell(std::string_view column) const
{
    auto title = std::find(mTitles.begin(), mTitles.end(), column);
    if (title == mTitles.end())
        throw std::runtime_error("no column " + std::string(column));
    auto index = static_cast<std::size_t>(title - mTitles.begin());
    return index < mCells.size() ? mCells[index] : std::string();
}

bool Row::isExpectation() const
{
    for (const char* column : { "status", "note" }) {
        if (std::find(mTitles.begin(), mTitles.end(), column) == mTitles.end())
            continue;
        std::string mark = cell(column);
        if (mark.find("UNSURE") != std::string::npos || mark.starts_with("unsure")
            || mark.starts_with("skip"))
            return false;
    }
    return true;
}

std::vector<Row> load(std::string_view file)
{
    std::string path = inSourceFolder("tests/vectors/" + std::string(file));
    std::ifstream stream(path);
    std::vector<Row> rows;
    Row row;
    for (std::string line; std::getline(stream, line);) {
        ++row.mLine;
        if (line.empty() || line.starts_with('#'))
            continue;
        if (row.mTitles.empty()) {
            row.mTitles = splitAtTabs(line);
            continue;
        }
        row.mCells = splitAtTabs(line);
        if (row.isExpectation())
            rows.push_back(row);
    }
    if (rows.empty())
        throw std::runtime_error("no expectations in " + path);
    return rows;
}

std::ostream& operator<<(std::ostream& stream, const Row& row)
{
    stream << "line " << row.line() << ':';
    return stream;
}

}
