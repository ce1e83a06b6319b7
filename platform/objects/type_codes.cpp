#include "platform/objects/type_codes.h"

#include "platform/objects/mutex.h"

#include <algorithm>
#include <string>
#include <unordered_set>

namespace platform {

namespace {

constexpr int kMaxNesting = 32;

/// The length of the code at the front of `text`; 0 when there is none.
std::size_t codeLength(std::string_view text, int nesting)
{
    if (text.empty() || nesting > kMaxNesting)
        return 0;
    switch (text[0]) {
    case '^': {
        std::size_t pointee = codeLength(text.substr(1), nesting + 1);
        return pointee ? pointee + 1 : 0;
    }
    case '{': {
        int open = 0;
        for (std::size_t at = 0; at < text.size(); ++at) {
            open += text[at] == '{' ? 1 : 0;
            open -= text[at] == '}' ? 1 : 0;
            if (open == 0)
                return at + 1;
            if (open > kMaxNesting)
                return 0;
        }
        return 0;
    }
    default:
        return std::string_view("v?@#:cCsSiIqQfd").find(text[0]) == std::string_view::npos ? 0 : 1;
    }
}

struct Layout {
    std::size_t size = 0;
    std::size_t alignment = 1;
};

std::size_t roundUp(std::size_t value, std::size_t alignment)
{
    return (value + alignment - 1) / alignment * alignment;
}

Layout layoutOf(std::string_view code, int nesting)
{
    switch (code.empty() ? 'v' : code[0]) {
    case 'c':
    case 'C':
        return { 1, 1 };
    case 's':
    case 'S':
        return { 2, 2 };
    case 'i':
    case 'I':
    case 'f':
        return { 4, 4 };
    case 'v':
    case '?':
        return {};
    case '{':
        break;
    default:
        return { 8, 8 };
    }
    std::size_t fields = code.find('=');
    if (fields == std::string_view::npos || nesting > kMaxNesting)
        return {};
    std::string_view rest = code.substr(fields + 1, code.size() - fields - 2);
    Layout whole;
    while (std::size_t length = codeLength(rest, nesting)) {
        Layout field = layoutOf(rest.substr(0, length), nesting + 1);
        whole.alignment = std::max(whole.alignment, field.alignment);
        whole.size = roundUp(whole.size, field.alignment) + field.size;
        rest.remove_prefix(length);
    }
    whole.size = roundUp(whole.size, whole.alignment);
    return whole;
}

class InternedCodes {
public:
    const char* intern(std::string_view code)
    {
        MutexLock lock(mLock);
        return mCodes.emplace(code).first->c_str();
    }

private:
    Mutex mLock;
    std::unordered_set<std::string> mCodes NS_GUARDED_BY(mLock); // its nodes never move
};

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

}

std::optional<std::vector<const char*>> splitTypeCodes(std::string_view types)
{
    static InternedCodes& interned = *new InternedCodes;
    std::vector<const char*> codes;
    while (!types.empty()) {
        std::size_t length = codeLength(types, 0);
        if (length == 0)
            return std::nullopt;
        codes.push_back(interned.intern(types.substr(0, length)));
        types.remove_prefix(length);
        while (!types.empty() && isDigit(types[0]))
            types.remove_prefix(1);
    }
    return codes;
}

std::size_t sizeOfTypeCode(std::string_view code)
{
    return layoutOf(code, 0).size;
}

}
