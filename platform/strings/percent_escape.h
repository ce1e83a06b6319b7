#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// `text` in UTF-8 with every byte escaped that may not stand in a URL. "%" itself may not, so what is
/// escaped already is escaped again; "/", ":", ";", "?", "@" and "&" may. Null for text that
/// holds a lone surrogate.
std::optional<std::u16string> addingPercentEscapes(std::u16string_view text);

/// The reverse. Null when "%" is not followed by two hexadecimal digits, or when the bytes are no UTF-8.
std::optional<std::u16string> replacingPercentEscapes(std::u16string_view text);

}
