#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// The files of expected results in tests/vectors.
///
/// A file is UTF-8: lines that begin with "#" are comments, then one line of column titles, then rows, all
/// separated by tabs. Columns whose title ends in "_json" hold one JSON literal each. A row whose status or
/// note begins with "unsure" or "skip", or whose note says UNSURE, is no expectation and is left out.
///
///     for (const vectors::Row& row : vectors::load("path_ops.tsv"))
///         row.text("path_json");
namespace vectors {

/// One JSON value. Text is UTF-16, as \u escapes are, so lone surrogates survive.
struct Json {
    enum class Kind { Null, Bool, Number, Text, Array, Object };

    struct Member;
    static Json parse(std::string_view literal);

    Kind kind = Kind::Null;
    bool boolean = false;
    double number = 0;
    std::u16string text;
    std::vector<Json> items;
    std::vector<Member> members;
};

struct Json::Member {
    std::u16string key;
    Json value;
};

class Row {
public:
    std::size_t line() const { return mLine; }
    /// The cell as it stands; empty when the row is shorter. Throws when there is no such column.
    std::string cell(std::string_view column) const;
    Json json(std::string_view column) const { return Json::parse(cell(column)); }
    std::u16string text(std::string_view column) const { return json(column).text; }
    int number(std::string_view column) const { return std::stoi(cell(column)); }

    /// "Line7", for the name of a parameterised test.
    std::string name() const { return "Line" + std::to_string(mLine); }

private:
    friend std::vector<Row> load(std::string_view file);
    bool isExpectation() const;

    std::size_t mLine = 0;
    std::vector<std::string> mTitles;
    std::vector<std::string> mCells;
};

/// The expectations of a file. Throws when it cannot be read or has no rows: a suite must not pass for want
/// of data.
std::vector<Row> load(std::string_view file);

std::ostream& operator<<(std::ostream& stream, const Row& row);

}
