#pragma once

#include <cstdint>
#include <optional>

namespace lum {

/// The system's record of its own version; a number that cannot be had is none.
class SystemVersion {
public:
    virtual std::optional<std::int32_t> majorNumber() const = 0;
    virtual std::optional<std::int32_t> minorNumber() const = 0;

protected:
    ~SystemVersion() = default;
};

/// That of the running system.
const SystemVersion& systemVersion();

}
