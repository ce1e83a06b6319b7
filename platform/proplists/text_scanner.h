#pragma once

#include "platform/proplists/property_list_fault.h"

#include <string>
#include <string_view>

namespace platform {

/// Goes over the old text form of property lists: what stands where, and the strings and data in it.
class TextScanner {
public:
    explicit TextScanner(std::u16string_view text) : mText(text) { }

    /// Skips white space and comments; whether there is anything else.
    bool hasMore();
    /// The next character after white space and comments; 0 at the end.
    char16_t next();
    /// Takes that character if it is `character`.
    bool take(char16_t character);

    /// Whether a string begins here.
    bool isAtString();
    /// A string, quoted or bare.
    std::u16string string();
    /// The bytes between "<" and ">", the first of which was taken.
    std::string data();

    /// Throws a fault that names the line.
    [[noreturn]] void fault(const std::string& text) const;

private:
    std::u16string quoted(char16_t quote);
    char16_t escaped();
    void skipComment();

    std::u16string_view mText;
    std::size_t mAt = 0;
};

}
