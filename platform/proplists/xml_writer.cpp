#include "platform/proplists/xml_writer.h"

#include "LUMPlatform/NSDate.h"
#include "LUMPlatform/NSNumber.h"
#include "platform/proplists/property_list_uid.h"
#include "platform/proplists/property_list_walk.h"
#include "platform/proplists/xml_text.h"

#include <charconv>

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
            return element("string", static_cast<const NSString&>(value));
        case PropertyListKind::Number:
            return number(static_cast<const NSNumber&>(value));
        case PropertyListKind::Date:
            indent();
            mOut.append("<date>");
            appendXmlDate(mOut, static_cast<const NSDate&>(value).timeIntervalSinceReferenceDate());
            return mOut.append("</date>\n");
        case PropertyListKind::Data:
            return data(static_cast<const NSData&>(value).bytes());
        case PropertyListKind::Uid:
            return uid(static_cast<const PropertyListUid&>(value).value());
        default:
            return; // containers come by the functions below
        }
    }
    void beginArray(std::size_t count) { begin("array", count); }
    void endArray() { end("array"); }
    void beginDictionary(std::span<const SortedEntry> entries) { begin("dict", entries.size()); }
    void endDictionary() { end("dict"); }
    void key(const NSString& key) { element("key", key); }

private:
    void indent() { mOut.append(std::string_view(mIndent).substr(0, mDepth)); }

    void begin(std::string_view name, std::size_t count)
    {
        indent();
        mOut.append('<');
        mOut.append(name);
        mOut.append(count > 0 ? ">\n" : "/>\n");
        if (++mDepth > mIndent.size())
            mIndent.push_back('\t');
        mIsEmpty.push_back(count == 0);
    }

    void end(std::string_view name)
    {
        --mDepth;
        const bool isEmpty = mIsEmpty.back();
        mIsEmpty.pop_back();
        if (isEmpty)
            return;
        indent();
        mOut.append("</");
        mOut.append(name);
        mOut.append(">\n");
    }

    void element(std::string_view name, const NSString& text)
    {
        indent();
        mOut.append('<');
        mOut.append(name);
        mOut.append('>');
        appendXmlText(mOut, text.characters());
        mOut.append("</");
        mOut.append(name);
        mOut.append(">\n");
    }

    void number(const NSNumber& number)
    {
        indent();
        if (number.isBool())
            return mOut.append(number.boolValue() ? "<true/>\n" : "<false/>\n");
        if (!number.isFloatingPoint()) {
            mOut.append("<integer>");
            if (*number.objCType() == 'Q')
                digits(number.unsignedLongLongValue());
            else
                digits(number.longLongValue());
            return mOut.append("</integer>\n");
        }
        mOut.append("<real>");
        const double value = number.doubleValue();
        if (value != value)
            mOut.append("nan");
        else if (value - value != 0)
            mOut.append(value > 0 ? "+infinity" : "-infinity");
        else
            digits(value);
        mOut.append("</real>\n");
    }

    /// The shortest digits that read back as the same number.
    template<typename Number> void digits(Number number)
    {
        char text[40];
        char* const end = std::to_chars(text, std::end(text), number).ptr;
        mOut.append({ text, static_cast<std::size_t>(end - text) });
    }

    void uid(std::uint32_t value)
    {
        begin("dict", 1);
        indent();
        mOut.append("<key>CF$UID</key>\n");
        indent();
        mOut.append("<integer>");
        digits(value);
        mOut.append("</integer>\n");
        end("dict");
    }

    /// Lines of 76 columns, counting a tab as eight, as long as that leaves 16 for the data.
    void data(std::span<const std::byte> bytes)
    {
        constexpr std::size_t kColumns = 76;
        constexpr std::size_t kLeast = 16;
        constexpr std::size_t kTab = 8;
        const std::size_t columns = std::max(kLeast, kColumns - std::min(kColumns, kTab * mDepth));
        indent();
        mOut.append("<data>\n");
        while (!bytes.empty()) {
            const auto line = bytes.first(std::min(bytes.size(), columns / 4 * 3));
            bytes = bytes.subspan(line.size());
            indent();
            appendBase64(mOut, line);
            mOut.append('\n');
        }
        indent();
        mOut.append("</data>\n");
    }

    OutputBytes mOut;
    std::size_t mDepth = 0;
    std::string mIndent; // as many tabs as were needed so far
    std::vector<bool> mIsEmpty; // of each open container
};

}

NSRef<NSData> writeXmlPropertyList(const NSId& propertyList)
{
    return Writer().write(propertyList);
}

}
