#pragma once

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSString.h"

#include <gtest/gtest.h>

/// "name: reason" of the exception that `action` raises; empty when it raises none.
template<typename Action> std::string raisedBy(const Action& action)
{
    try {
        static_cast<void>(action());
    } catch (const NSException& exception) {
        return exception.what();
    }
    return {};
}

/// The name alone.
template<typename Action> std::string nameRaisedBy(const Action& action)
{
    const std::string raised = raisedBy(action);
    return raised.substr(0, raised.find(':'));
}
