#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Goes over plain XML: what stands where, and the text between tags.
class PlainXmlScanner {
public:
    explicit PlainXmlScanner(std::string_view text) : mRest(text) { }

    bool isAtEnd() const { return mRest.empty(); }
    void skipSpace()
    {
        while (!mRest.empty() && isSpace(mRest.front()))
            mRest.remove_prefix(1);
    }
    bool take(std::string_view text)
    {
        if (!mRest.starts_with(text))
            return false;
        mRest.remove_prefix(text.size());
        return true;
    }
    /// The declaration, the document type and the start of <plist>, as far as they are there.
    void takeHead();

    /// The text up to the next tag, with entities replaced; valid until the next call. Null when it is not
    /// plain.
    std::optional<std::string_view> text();
    /// Whether all of the last text was ASCII.
    bool isAscii() const { return mIsAscii; }

private:
    static bool isSpace(char character)
    {
        return character == ' ' || character == '\n' || character == '\t' || character == '\r';
    }
    bool appendEntity();

    std::string_view mRest;
    std::string mReplaced; // a text that had entities
    bool mIsAscii = true;
};

}
