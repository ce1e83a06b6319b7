#pragma once

namespace lum {

/// The processors that the calling thread may run on now; else those online; else 1.
unsigned availableProcessors() noexcept;

}
