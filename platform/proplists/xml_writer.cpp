#include "platform/proplists/xml_writer.h"

#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSNumber.h"
#include "platform/proplists/property_list_uid.h"
#include "platform/proplists/property_list_walk.h"
#include "platform/proplists/xml_text.h"

#include <charconv>
#include <cstring>

namespace platform {
namespace {

constexpr std::string_view kHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                   "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                   "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                                   "<plist version=\"1.0\">\n";
constexpr std::string_view kTail = "</plist>\n";

class Writer {
public:
    NSRef<NSData> write(const NSId& propertyList)
    {
        mOut.append(kHead);
        PropertyListWalk(*this).through(propertyList);
        mOut.append(kTail);
        return std::move(mOut).data();
    }

    // What the walk calls.

    void value(const NSObject& value, PropertyListKind kind)
    {
        switch (kind) {
        case PropertyListKind::String:
            return text("<string>", static_cast<const NSString&>(value), "</string>\n");
        case PropertyListKind::Number:
            return number(static_cast<const NSNumber&>(value));
        case PropertyListKind::Date:
            line("<date>");
            appendXmlDate(mOut, static_cast<const NSDate&>(value).timeIntervalSinceReferenceDate());
            return finish("</date>\n");
        case PropertyListKind::Data:
            return data(static_cast<const NSData&>(value).bytes());
        case PropertyListKind::Uid:
            return uid(static_cast<const PropertyListUid&>(value).value());
        default:
            return; // containers come by the functions below
        }
    }
    void beginArray(std::size_t count) { count > 0 ? begin("<array>\n", count) : begin("<array/>\n", count); }
    void endArray() { end("</array>\n"); }
    void beginDictionary(std::span<const SortedEntry> entries)
    {
        entries.empty() ? begin("<dict/>\n", 0) : begin("<dict>\n", entries.size());
    }
    void endDictionary() { end("</dict>\n"); }
    void key(const NSString& key) { text("<key>", key, "</key>\n"); }

private:
    /// Indents, and appends what begins there. The sizes of tags are known to the compiler, which then copies
    /// without a call.
    template<std::size_t Size> void line(const char (&start)[Size])
    {
        constexpr char kTabs[] = "\t\t\t\t\t\t\t\t";
        char* to = mOut.room(mDepth + sizeof kTabs + Size);
        if (mDepth < sizeof kTabs)
            std::memcpy(to, kTabs, sizeof kTabs - 1); // and what is too much is written over
        else
            std::memset(to, '\t', mDepth);
        std::memcpy(to + mDepth, start, Size - 1);
        mOut.wrote(mDepth + Size - 1);
    }

    template<std::size_t Size> void finish(const char (&end)[Size])
    {
        std::memcpy(mOut.room(Size), end, Size - 1);
        mOut.wrote(Size - 1);
    }

    template<std::size_t Size> void begin(const char (&tag)[Size], std::size_t count)
    {
        line(tag);
        ++mDepth;
        mIsEmpty.push_back(count == 0);
    }

    template<std::size_t Size> void end(const char (&tag)[Size])
    {
        --mDepth;
        const bool isEmpty = mIsEmpty.back();
        mIsEmpty.pop_back();
        if (!isEmpty)
            line(tag);
    }

    template<std::size_t Size, std::size_t EndSize>
    void text(const char (&tag)[Size], const NSString& text, const char (&endTag)[EndSize])
    {
        line(tag);
        appendXmlText(mOut, text.characters());
        finish(endTag);
    }

    void number(const NSNumber& number)
    {
        if (number.isBool())
            return number.boolValue() ? line("<true/>\n") : line("<false/>\n");
        if (number.isFloatingPoint()) {
            line("<real>");
            real(number.doubleValue());
            return finish("</real>\n");
        }
        line("<integer>");
        if (*number.objCType() == 'Q')
            digits(number.unsignedLongLongValue());
        else
            digits(number.longLongValue());
        finish("</integer>\n");
    }

    void real(double value)
    {
        if (value != value)
            mOut.append("nan");
        else if (value - value != 0)
            mOut.append(value > 0 ? "+infinity" : "-infinity");
        else
            digits(value);
    }

    /// The shortest digits that read back as the same number.
    template<typename Number> void digits(Number number)
    {
        constexpr std::size_t kMost = 40;
        char* const to = mOut.room(kMost);
        mOut.wrote(static_cast<std::size_t>(std::to_chars(to, to + kMost, number).ptr - to));
    }

    void uid(std::uint32_t value)
    {
        begin("<dict>\n", 1);
        line("<key>CF$UID</key>\n");
        line("<integer>");
        digits(value);
        finish("</integer>\n");
        end("</dict>\n");
    }

    /// Lines of 76 columns, counting a tab as eight, as long as that leaves 16 for the data.
    void data(std::span<const std::byte> bytes)
    {
        constexpr std::size_t kColumns = 76;
        constexpr std::size_t kLeast = 16;
        constexpr std::size_t kTab = 8;
        const std::size_t columns = std::max(kLeast, kColumns - std::min(kColumns, kTab * mDepth));
        line("<data>\n");
        while (!bytes.empty()) {
            const auto part = bytes.first(std::min(bytes.size(), columns / 4 * 3));
            bytes = bytes.subspan(part.size());
            line("");
            appendBase64(mOut, part);
            finish("\n");
        }
        line("</data>\n");
    }

    OutputBytes mOut;
    std::size_t mDepth = 0;
    std::vector<bool> mIsEmpty; // of each open container
};

}

NSRef<NSData> writeXmlPropertyList(const NSId& propertyList)
{
    return Writer().write(propertyList);
}

}
