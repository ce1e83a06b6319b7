#pragma once

#include "platform/desktop/pixels.h"

#include <memory>

namespace platform {

/// What a file is shown as when no icon theme has a picture for it.
enum class BuiltInIcon { File, Folder, Application, Unknown };

/// A picture of 32 by 32 pixels; always the same one.
std::shared_ptr<const Pixels> builtInIcon(BuiltInIcon kind);

}
