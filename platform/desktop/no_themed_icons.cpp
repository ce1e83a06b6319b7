#include "platform/desktop/themed_icons.h"

// In place of themed_icons.cpp where LUM_DESKTOP is off: nothing here reads pictures.
namespace platform {

std::shared_ptr<const Pixels> themedIcon(std::span<const std::string> /*names*/)
{
    return nullptr;
}

}
