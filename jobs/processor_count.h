#pragma once

namespace lum {

/// The processors this process may run on now; 1 when the system does not say.
unsigned availableProcessors() noexcept;

}
