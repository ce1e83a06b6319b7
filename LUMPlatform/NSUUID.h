#pragma once

#include "LUMPlatform/NSObject.h"

#include <array>

/// An immutable universally unique identifier: 16 bytes, by RFC 4122. Threads: any.
///
///     auto name = NSString::stringWithFormat("Recording_%@", NSUUID::UUID()->UUIDString());
class NS_EXPORT NSUUID : public NSObject {
public:
    static const NSClass& classObject();

    /// A new one of random bits (version 4). Null when the system has no randomness to give.
    /// Selector: UUID
    static NSRef<NSUUID> UUID();
    /// The one of these 16 bytes, whatever they are. Null bytes raise NSInvalidArgumentException.
    /// Selector: initWithUUIDBytes:
    static NSRef<NSUUID> initWithUUIDBytes(const unsigned char* bytes);
    /// Stores the 16 bytes; null does nothing.
    /// Selector: getUUIDBytes:
    void getUUIDBytes(unsigned char* bytes) const;

    /// "1B4E28BA-2FA1-41D2-883F-0016D3CCA427".
    /// Selector: UUIDString
    NSRef<NSString> UUIDString() const;

    bool isEqual(const NSId& other) const override; ///< The same bytes.
    NSUInteger hash() const override;
    NSRef<NSString> description() const override; ///< The same as UUIDString.
    NSId copy() const override; ///< Itself.

protected:
    using Bytes = std::array<unsigned char, 16>;
    explicit NSUUID(const Bytes& bytes) : mBytes(bytes) { }
    ~NSUUID() override;

private:
    const Bytes mBytes;
};
