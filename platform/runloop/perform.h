#pragma once

#include "LUMPlatform/NSObject.h"

namespace platform {

/// Sends a selector of no or one argument.
inline void perform(const NSId& receiver, NSSelector selector, const NSId& argument)
{
    if (selector.arity() == 0)
        static_cast<void>(receiver->performSelector(selector));
    else
        static_cast<void>(receiver->performSelectorWithObject(selector, argument));
}

}
