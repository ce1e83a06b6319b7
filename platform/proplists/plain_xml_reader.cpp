#include "platform/proplists/plain_xml_reader.h"

#include "LUMPlatform/NSNumber.h"
#include "platform/proplists/plain_xml_scanner.h"
#include "platform/proplists/property_list_builder.h"
#include "platform/proplists/property_list_fault.h"
#include "platform/proplists/xml_values.h"

namespace platform {
namespace {

/// Thrown where the text is not plain.
struct NotPlain { };

/// UTF-8 that XML does not allow: U+FFFE and U+FFFF.
bool hasNonCharacter(std::string_view text)
{
    return text.find("\xEF\xBF\xBE") != std::string_view::npos
        || text.find("\xEF\xBF\xBF") != std::string_view::npos;
}

class Reader {
public:
    Reader(std::string_view text, const NSDecodingLimits& limits) : mScan(text), mBuilder(limits) { }

    NSId read()
    {
        mScan.takeHead();
        const bool hasRoot = mScan.take("<plist version=\"1.0\">") || mScan.take("<plist>");
        do
            readTag();
        while (mBuilder.isInContainer());
        mScan.skipSpace();
        require(!hasRoot || mScan.take("</plist>"));
        mScan.skipSpace();
        require(mScan.isAtEnd());
        return mBuilder.top();
    }

private:
    static void require(bool isPlain)
    {
        if (!isPlain)
            throw NotPlain();
    }

    void readTag()
    {
        mScan.skipSpace();
        require(mScan.take("<"));
        if (mScan.take("key>")) {
            mBuilder.addUtf8Key(textBefore("</key>"));
        } else if (mScan.take("string>")) {
            const std::string_view text = textBefore("</string>");
            mScan.isAscii() ? mBuilder.addAsciiString(text) : mBuilder.addUtf8String(text);
        } else if (mScan.take("integer>")) {
            mBuilder.add(integerFromXml(textBefore("</integer>")));
        } else if (mScan.take("dict>")) {
            mBuilder.beginDictionary();
        } else if (mScan.take("array>")) {
            mBuilder.beginArray();
        } else if (mScan.take("true/>")) {
            mBuilder.add(NSNumber::numberWithBool(true));
        } else if (mScan.take("false/>")) {
            mBuilder.add(NSNumber::numberWithBool(false));
        } else if (mScan.take("real>")) {
            mBuilder.add(realFromXml(textBefore("</real>")));
        } else if (mScan.take("date>")) {
            mBuilder.add(dateFromXml(textBefore("</date>")));
        } else if (mScan.take("data>")) {
            mBuilder.add(dataFromXml(textBefore("</data>")));
        } else
            readEndOrEmpty();
    }

    void readEndOrEmpty()
    {
        if (mScan.take("array/>")) {
            mBuilder.beginArray();
            mBuilder.endContainer();
        } else if (mScan.take("dict/>")) {
            mBuilder.beginDictionary();
            mBuilder.endContainer();
        } else if (mScan.take("string/>")) {
            mBuilder.addUtf8String({});
        } else {
            const bool isDictionary = mScan.take("/dict>");
            require(isDictionary || mScan.take("/array>"));
            require(mBuilder.isInContainer() && mBuilder.isInDictionary() == isDictionary);
            mBuilder.endContainer();
        }
    }

    /// The text up to this end tag.
    std::string_view textBefore(std::string_view endTag)
    {
        const auto text = mScan.text();
        require(text && mScan.take(endTag) && (mScan.isAscii() || !hasNonCharacter(*text)));
        return *text;
    }

    PlainXmlScanner mScan;
    PropertyListBuilder mBuilder;
};

}

NSId readPlainXmlPropertyList(std::span<const std::byte> bytes, const NSDecodingLimits& limits)
{
    try {
        return Reader({ reinterpret_cast<const char*>(bytes.data()), bytes.size() }, limits).read();
    } catch (const NotPlain&) {
        return nullptr;
    } catch (const PropertyListFault&) {
        return nullptr;
    }
}

}
