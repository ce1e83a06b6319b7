#include "platform/proplists/xml_reader.h"

#include "LUMPlatform/NSNumber.h"
#include "platform/proplists/property_list_builder.h"
#include "platform/proplists/property_list_fault.h"
#include "platform/proplists/xml_values.h"

#include <algorithm>
#include <exception>
#include <expat.h>
#include <memory>
#include <string>

namespace platform {
namespace {

enum class Element { Plist, Array, Dictionary, Key, String, Integer, Real, Date, Data, True, False };

Element elementNamed(std::string_view name)
{
    struct Named {
        std::string_view name;
        Element element;
    };
    static constexpr Named kElements[] = {
        { "key", Element::Key },
        { "string", Element::String },
        { "integer", Element::Integer },
        { "dict", Element::Dictionary },
        { "real", Element::Real },
        { "array", Element::Array },
        { "true", Element::True },
        { "false", Element::False },
        { "data", Element::Data },
        { "date", Element::Date },
        { "plist", Element::Plist },
    };
    for (const Named& named : kElements)
        if (named.name == name)
            return named.element;
    throw PropertyListFault("there is no element <" + std::string(name.substr(0, 40)) + ">");
}

bool isXmlSpace(std::byte byte)
{
    return std::string_view(" \t\r\n").find(std::to_integer<char>(byte)) != std::string_view::npos;
}

/// Turns the events of expat into objects. Entities of the document's own are refused where they are
/// declared, so none is ever expanded, and nothing outside the document is read.
class Reader {
public:
    explicit Reader(const NSDecodingLimits& limits) : mParser(XML_ParserCreate(nullptr)), mBuilder(limits)
    {
        if (!mParser)
            throw std::bad_alloc();
        XML_SetUserData(mParser.get(), this);
        XML_SetElementHandler(mParser.get(), onBegin, onEnd);
        XML_SetCharacterDataHandler(mParser.get(), onText);
        XML_SetEntityDeclHandler(mParser.get(), onEntity);
        XML_SetSkippedEntityHandler(mParser.get(), onSkippedEntity);
    }

    NSId read(std::span<const std::byte> bytes)
    {
        // XML allows nothing in front of its declaration, but texts in programs often begin with an empty
        // line.
        for (; !bytes.empty() && isXmlSpace(bytes[0]); bytes = bytes.subspan(1))
            mLinesBefore += bytes[0] == std::byte { '\n' };
        constexpr std::size_t kAtOnce = std::size_t { 1 } << 28; // expat counts in int
        bool isLast = false;
        while (!isLast) {
            const auto piece = bytes.first(std::min(bytes.size(), kAtOnce));
            bytes = bytes.subspan(piece.size());
            isLast = bytes.empty();
            const auto status = XML_Parse(mParser.get(), reinterpret_cast<const char*>(piece.data()),
                static_cast<int>(piece.size()), isLast);
            if (mProblem)
                std::rethrow_exception(mProblem);
            if (status != XML_STATUS_OK)
                throw PropertyListFault(std::string("the XML is not well-formed: ")
                    + XML_ErrorString(XML_GetErrorCode(mParser.get())) + line());
        }
        return mBuilder.top();
    }

private:
    struct Free {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    std::string line() const
    {
        return " on line " + std::to_string(mLinesBefore + XML_GetCurrentLineNumber(mParser.get()));
    }

    // Nothing may be thrown through expat, which is C: the parser stops, and read() throws it.

    template<typename Action> static void guarded(void* self, Action action)
    {
        auto& reader = *static_cast<Reader*>(self);
        if (reader.mProblem)
            return;
        try {
            action(reader);
        } catch (const PropertyListFault& fault) {
            reader.stop(std::make_exception_ptr(PropertyListFault(fault.text + reader.line())));
        } catch (...) {
            reader.stop(std::current_exception());
        }
    }
    void stop(std::exception_ptr problem)
    {
        mProblem = std::move(problem);
        XML_StopParser(mParser.get(), XML_FALSE);
    }

    static void XMLCALL onBegin(void* self, const XML_Char* name, const XML_Char**)
    {
        guarded(self, [&](Reader& reader) { reader.begin(elementNamed(name)); });
    }
    static void XMLCALL onEnd(void* self, const XML_Char*)
    {
        guarded(self, [](Reader& reader) { reader.end(); });
    }
    static void XMLCALL onText(void* self, const XML_Char* text, int length)
    {
        guarded(self, [&](Reader& reader) { reader.text({ text, static_cast<std::size_t>(length) }); });
    }
    static void XMLCALL onEntity(void* self, const XML_Char*, int, const XML_Char*, int, const XML_Char*,
        const XML_Char*, const XML_Char*, const XML_Char*)
    {
        guarded(self, [](Reader&) { throw PropertyListFault("the document declares an entity"); });
    }
    static void XMLCALL onSkippedEntity(void* self, const XML_Char* name, int)
    {
        guarded(self, [&](Reader&) {
            throw PropertyListFault("there is no entity '" + std::string(name).substr(0, 40) + "'");
        });
    }

    void begin(Element element)
    {
        if (mIsInValue)
            throw PropertyListFault("an element stands inside a value");
        if (element == Element::Plist) {
            if (mHasElements)
                throw PropertyListFault("<plist> stands inside an element");
        } else if (element == Element::Array)
            mBuilder.beginArray();
        else if (element == Element::Dictionary)
            mBuilder.beginDictionary();
        else {
            mIsInValue = true;
            mValue = element;
            mText.clear();
        }
        mHasElements = true;
    }

    void end()
    {
        if (mIsInValue) {
            mIsInValue = false;
            endValue();
        } else if (mBuilder.isInContainer())
            mBuilder.endContainer();
    }

    void endValue()
    {
        switch (mValue) {
        case Element::Key:
            return mBuilder.addUtf8Key(mText);
        case Element::String:
            return mBuilder.addUtf8String(mText);
        case Element::Integer:
            return mBuilder.add(integerFromXml(mText));
        case Element::Real:
            return mBuilder.add(realFromXml(mText));
        case Element::Date:
            return mBuilder.add(dateFromXml(mText));
        case Element::Data:
            return mBuilder.add(dataFromXml(mText));
        default:
            return mBuilder.add(NSNumber::numberWithBool(mValue == Element::True));
        }
    }

    void text(std::string_view text)
    {
        const bool holdsText = mIsInValue && mValue != Element::True && mValue != Element::False;
        if (holdsText)
            mText += text;
        else if (text.find_first_not_of(" \t\n\r") != std::string_view::npos)
            throw PropertyListFault("text stands outside a value");
    }

    std::unique_ptr<XML_ParserStruct, Free> mParser;
    PropertyListBuilder mBuilder;
    XML_Size mLinesBefore = 0; // what the parser sees
    bool mHasElements = false;
    bool mIsInValue = false; // in an element that holds no others
    Element mValue {};
    std::string mText;
    std::exception_ptr mProblem;
};

}

bool isXmlPropertyList(std::span<const std::byte> bytes)
{
    // Only what is ASCII counts, so one unit of UTF-16 is a character and a zero.
    const auto byte = [&](std::size_t at) { return std::to_integer<unsigned char>(bytes[at]); };
    constexpr std::size_t kLooksAt = 256;
    std::string start; // from the first character that is no white space
    for (std::size_t at = 0; at < bytes.size() && start.size() < kLooksAt; ++at)
        if (byte(at) != 0 && byte(at) < 0x80 && !(start.empty() && isXmlSpace(bytes[at])))
            start.push_back(static_cast<char>(byte(at)));
    if (!start.starts_with('<'))
        return false;
    const std::size_t stop = start.find_first_not_of("0123456789abcdefABCDEF \t\n\r", 1);
    return stop != std::string::npos && start[stop] != '>';
}

NSId readXmlPropertyList(std::span<const std::byte> bytes, const NSDecodingLimits& limits)
{
    return Reader(limits).read(bytes);
}

}
