#pragma once

#include "platform/proplists/output_bytes.h"

#include <span>

namespace platform {

/// Appends text as character data in UTF-8, with what XML reads otherwise escaped. Throws PropertyListFault
/// for what no XML document can hold.
void appendXmlText(OutputBytes& out, std::u16string_view text);

/// Appends bytes in Base64, with padding.
void appendBase64(OutputBytes& out, std::span<const std::byte> bytes);

/// "2001-01-01T00:00:00Z"; fractions of a second are dropped. Throws PropertyListFault for years that have
/// not four digits.
void appendXmlDate(OutputBytes& out, double secondsSinceReferenceDate);

}
