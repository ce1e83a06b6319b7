#include "platform/proplists/text_reader.h"

#include "LUMPlatform/NSData.h"
#include "LUMPlatform/NSDictionary.h"
#include "platform/proplists/property_list_builder.h"
#include "platform/proplists/text_scanner.h"
#include "platform/strings/utf_conversion.h"

namespace platform {
namespace {

/// The text without its byte order mark.
std::u16string textOf(std::span<const std::byte> bytes)
{
    const auto byte = [&](std::size_t at) { return std::to_integer<unsigned>(bytes[at]); };
    const unsigned start = bytes.size() < 2 ? 0 : byte(0) << 8 | byte(1);
    if (start == 0xFEFF || start == 0xFFFE) {
        if (bytes.size() % 2 != 0)
            throw PropertyListFault("the text in UTF-16 ends in half a character");
        const unsigned high = start == 0xFEFF ? 0 : 1;
        std::u16string text;
        text.reserve(bytes.size() / 2);
        for (std::size_t at = 2; at < bytes.size(); at += 2)
            text.push_back(static_cast<char16_t>(byte(at + high) << 8 | byte(at + 1 - high)));
        return text;
    }
    auto text = utf16FromUtf8({ reinterpret_cast<const char*>(bytes.data()), bytes.size() });
    if (!text)
        throw PropertyListFault("the bytes are no property list");
    if (text->starts_with(u'\uFEFF'))
        text->erase(0, 1);
    return std::move(*text);
}

class Reader {
public:
    Reader(std::u16string_view text, const NSDecodingLimits& limits) : mScan(text), mBuilder(limits) { }

    NSId read()
    {
        if (!mScan.hasMore())
            return NSDictionary::dictionary();
        if (mScan.isAtString())
            return stringOrPairs();
        beginValue();
        while (mBuilder.isInContainer())
            mIsDictionary.back() ? nextPair() : nextElement();
        if (mScan.hasMore())
            mScan.fault("there is more than one object");
        return mBuilder.top();
    }

private:
    /// A lone string, or the pairs of a dictionary without braces.
    NSId stringOrPairs()
    {
        auto string = NSString::stringWithCharacters(mScan.string());
        if (!mScan.hasMore())
            return string;
        mBuilder.beginDictionary();
        mIsDictionary.push_back(true);
        mIsBare = true;
        pairWithKey(string);
        while (mBuilder.isInContainer())
            mIsDictionary.back() ? nextPair() : nextElement();
        return mBuilder.top();
    }

    void beginValue()
    {
        if (mScan.take('{')) {
            mBuilder.beginDictionary();
            mIsDictionary.push_back(true);
        } else if (mScan.take('(')) {
            mBuilder.beginArray();
            mIsDictionary.push_back(false);
        } else {
            value();
            endPairIfNeeded();
        }
    }

    void value()
    {
        if (!mScan.take('<'))
            return mBuilder.add(NSString::stringWithCharacters(mScan.string()));
        const std::string bytes = mScan.data();
        auto data = NSData::dataWithBytes(bytes.data(), bytes.size());
        if (!data)
            throw std::bad_alloc();
        mBuilder.add(std::move(data));
    }

    void endContainer()
    {
        mBuilder.endContainer();
        mIsDictionary.pop_back();
        endPairIfNeeded();
    }

    /// What follows a value.
    void endPairIfNeeded()
    {
        if (mIsDictionary.empty())
            return;
        if (mIsDictionary.back()) {
            if (!mScan.take(';'))
                mScan.fault("a pair does not end with ';'");
        } else if (!mScan.take(',') && mScan.next() != ')')
            mScan.fault("an array has neither ',' nor ')' behind a value");
    }

    void nextElement()
    {
        if (mScan.take(')'))
            endContainer();
        else
            beginValue();
    }

    void nextPair()
    {
        const bool isOuter = mIsBare && mIsDictionary.size() == 1;
        if (isOuter ? !mScan.hasMore() : mScan.take('}'))
            return endContainer();
        if (!mScan.isAtString())
            mScan.fault("a dictionary wants a key");
        pairWithKey(NSString::stringWithCharacters(mScan.string()));
    }

    /// The rest of a pair; a key without a value stands for itself.
    void pairWithKey(const NSRef<NSString>& key)
    {
        mBuilder.addKey(key);
        if (mScan.take('='))
            return beginValue();
        mBuilder.add(key);
        endPairIfNeeded();
    }

    TextScanner mScan;
    PropertyListBuilder mBuilder;
    std::vector<bool> mIsDictionary; // of each open container
    bool mIsBare = false; // the outermost dictionary has no braces
};

}

NSId readTextPropertyList(std::span<const std::byte> bytes, const NSDecodingLimits& limits)
{
    if (bytes.empty())
        throw PropertyListFault("there are no bytes");
    const std::u16string text = textOf(bytes);
    return Reader(text, limits).read();
}

}
