#include "platform/archiving/sequential_scalars.h"

#include "LUMPlatform/NSCoder.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

#include <utility>

namespace platform {
namespace {

/// Numbers without a sign are written as the signed ones of the same bits.
template<typename Signed> Whole unsignedOf(SequentialReader& reader, std::int64_t value)
{
    if (std::in_range<Signed>(value))
        value = static_cast<std::make_unsigned_t<Signed>>(value);
    else if (!std::in_range<std::make_unsigned_t<Signed>>(value))
        reader.fault("an integer is larger than its type");
    return { value };
}

}

Whole readWhole(SequentialReader& reader, char type)
{
    switch (type) {
    case 'c':
        return { static_cast<std::int8_t>(reader.readByte()) };
    case 'C':
        return { reader.readByte() };
    case 'S':
        return unsignedOf<std::int16_t>(reader, reader.readInteger());
    case 'I':
    case 'L':
        return unsignedOf<std::int32_t>(reader, reader.readInteger());
    case 'Q':
        return { reader.readInteger(), true };
    default:
        return { reader.readInteger() };
    }
}

void writeScalar(SequentialWriter& writer, const NSArgument& value)
{
    switch (const char type = value.kind()) {
    case 'c':
    case 'C':
        writer.writeByte(value.as<std::uint8_t>());
        break;
    case 's':
    case 'i':
    case 'q':
    case 'Q':
        writer.writeInteger(value.as<std::int64_t>());
        break;
    case 'S':
        writer.writeInteger(static_cast<std::int16_t>(value.as<std::uint16_t>()));
        break;
    case 'I':
        writer.writeInteger(static_cast<std::int32_t>(value.as<std::uint32_t>()));
        break;
    case 'f':
        writer.writeReal(value.as<float>());
        break;
    case 'd':
        writer.writeReal(value.as<double>());
        break;
    default:
        throw NSException(
            NSInvalidArgumentException, std::string("values of type ") + type + " cannot be archived");
    }
}

NSArgument readScalar(SequentialReader& reader, char written, const char* asked)
{
    if (isWholeType(written) && isWholeType(asked[0]))
        return wholeAs(readWhole(reader, written), asked[0]);
    if (isRealType(written) && isRealType(asked[0]))
        return NSArgument::of(reader.readReal(written == 'f' ? sizeof(float) : sizeof(double)))
            .convertedTo(asked);
    throw NSException(NSInvalidUnarchiveOperationException,
        std::string("the archive holds a value of type ") + written + " where " + asked + " is asked for");
}

}
