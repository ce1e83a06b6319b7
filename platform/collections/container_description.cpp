#include "platform/collections/container_description.h"

#include "LUMPlatform/NSArray.h"
#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDictionary.h"
#include "LUMPlatform/NSSet.h"
#include "LUMPlatform/NSString.h"

#include <algorithm>

namespace platform {

namespace {

constexpr std::size_t kMaxDepth = 64;
constexpr std::size_t kIndent = 4;

/// The containers being written on this thread, outermost first: an element's own description may start anew
/// inside one.
thread_local std::vector<const NSObject*> tOpen;

class Opened {
public:
    explicit Opened(const NSObject& container)
        : mFresh(tOpen.size() < kMaxDepth && std::find(tOpen.begin(), tOpen.end(), &container) == tOpen.end())
    {
        tOpen.push_back(&container);
    }
    ~Opened() { tOpen.pop_back(); }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    bool fresh() const { return mFresh; }

private:
    bool mFresh;
};

bool isPlainWord(std::u16string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char16_t c) {
        return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
    });
}

void writeQuoted(std::string& out, char16_t unit)
{
    static constexpr char kHex[] = "0123456789abcdef";
    if (unit == u'\n')
        out += "\\n";
    else if (unit == u'\t')
        out += "\\t";
    else if (unit < 0x20 || unit >= 0x7f) {
        out += "\\U";
        for (int shift = 12; shift >= 0; shift -= 4)
            out += kHex[(unit >> shift) & 0xf];
    } else {
        if (unit == u'"' || unit == u'\\')
            out += '\\';
        out += static_cast<char>(unit);
    }
}

void writeText(std::string& out, const NSString& text)
{
    if (isPlainWord(text.characters())) {
        out += text.utf8();
        return;
    }
    out += '"';
    for (char16_t unit : text.characters())
        writeQuoted(out, unit);
    out += '"';
}

void write(std::string& out, const NSObject& object, std::size_t level);

template<typename Collection>
void writeList(std::string& out, const Collection& collection, std::size_t level)
{
    out += "(\n";
    const char* separator = "";
    for (const NSId& element : collection) {
        out += separator;
        out.append((level + 1) * kIndent, ' ');
        write(out, *element, level + 1);
        separator = ",\n";
    }
    out += collection.count() > 0 ? "\n" : "";
    out.append(level * kIndent, ' ');
    out += ")";
}

std::vector<NSDictionary::Entry> entriesToWrite(const NSDictionary& dictionary)
{
    std::vector<NSDictionary::Entry> entries(dictionary.begin(), dictionary.end());
    if (std::all_of(entries.begin(), entries.end(), [](const auto& e) { return NSCast<NSString>(e.key); }))
        std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) {
            return NSCast<NSString>(a.key)->compare(NSCast<NSString>(b.key)) == NSOrderedAscending;
        });
    return entries;
}

void writeDictionary(std::string& out, const NSDictionary& dictionary, std::size_t level)
{
    out += "{\n";
    for (const auto& [key, value] : entriesToWrite(dictionary)) {
        out.append((level + 1) * kIndent, ' ');
        write(out, *key, level + 1);
        out += " = ";
        write(out, *value, level + 1);
        out += ";\n";
    }
    out.append(level * kIndent, ' ');
    out += "}";
}

template<typename Container, typename Write>
bool writeIf(
    std::string& out, const NSObject& object, std::size_t level, const char* cut, const Write& writeIt)
{
    auto container = dynamic_cast<const Container*>(&object);
    if (!container)
        return false;
    Opened opened(object);
    out.append(level * kIndent, ' ');
    if (opened.fresh())
        writeIt(out, *container, level);
    else
        out += cut;
    return true;
}

void writeSet(std::string& out, const NSSet& set, std::size_t level)
{
    out += "{";
    writeList(out, set, level);
    out += "}";
}

void write(std::string& out, const NSObject& object, std::size_t level)
{
    if (writeIf<NSArray>(out, object, level, "(...)", writeList<NSArray>)
        || writeIf<NSDictionary>(out, object, level, "{...}", writeDictionary)
        || writeIf<NSSet>(out, object, level, "{(...)}", writeSet))
        return;
    if (dynamic_cast<const NSData*>(&object))
        out += object.description()->utf8();
    else
        writeText(out, *object.description());
}

}

NSRef<NSString> containerDescription(const NSObject& container)
{
    std::string out;
    write(out, container, 0);
    return out;
}

}
