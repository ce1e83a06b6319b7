#include "LUMPlatform/NSUUID.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"
#include "platform/values/random_bytes.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr NSMethod kMethods[] = {
    NSMethodOf<"UUIDString", &NSUUID::UUIDString>(),
    NSMethodOf<"getUUIDBytes:", &NSUUID::getUUIDBytes>(),
};

}

const NSClass& NSUUID::classObject()
{
    static const NSClass& type = NSClass::define("NSUUID", &NSObject::classObject(), kMethods);
    return type;
}

NSUUID::~NSUUID() = default;

NSRef<NSUUID> NSUUID::UUID()
{
    Bytes bytes;
    if (!platform::fillWithRandomBytes(std::as_writable_bytes(std::span(bytes))))
        return nullptr;
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40); // version 4
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80); // the variant of RFC 4122
    return NSMake<NSUUID>(bytes);
}

NSRef<NSUUID> NSUUID::initWithUUIDBytes(const unsigned char* bytes)
{
    if (!bytes)
        throw NSException(NSInvalidArgumentException, "initWithUUIDBytes: the bytes are null");
    Bytes copy;
    std::copy_n(bytes, copy.size(), copy.begin());
    return NSMake<NSUUID>(copy);
}

void NSUUID::getUUIDBytes(unsigned char* bytes) const
{
    if (bytes)
        std::copy(mBytes.begin(), mBytes.end(), bytes);
}

NSRef<NSString> NSUUID::UUIDString() const
{
    constexpr char kHex[] = "0123456789ABCDEF";
    std::string text;
    for (std::size_t i = 0; i < mBytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            text.push_back('-');
        text.push_back(kHex[mBytes[i] >> 4]);
        text.push_back(kHex[mBytes[i] & 15]);
    }
    return text;
}

bool NSUUID::isEqual(const NSId& other) const
{
    const auto uuid = NSCast<NSUUID>(other);
    return uuid && uuid->mBytes == mBytes;
}

NSUInteger NSUUID::hash() const
{
    NSUInteger hash = 0;
    std::memcpy(&hash, mBytes.data(), sizeof hash);
    return hash;
}

NSRef<NSString> NSUUID::description() const
{
    return UUIDString();
}

NSId NSUUID::copy() const
{
    return NSShare(const_cast<NSUUID*>(this));
}
