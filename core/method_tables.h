#pragma once

#include "LUMPlatform/NSMethod.h"

namespace lum {

/// The tables of the extension sets, each defined beside its set. core/method_tables.cpp gives them to the
/// classes they extend.
std::span<const NSMethod> mainThreadProxyMethods();

}
