#pragma once

#include "LUMPlatform/NSClass.h"

#include <array>
#include <span>

/// Calls what answers `selector`: a method of the receiver's class chain, an extension, or forwardInvocation.
/// Raises NSInvalidArgumentException when nobody answers, when the number of arguments is not the method's,
/// or when an argument is not of the method's type and cannot be converted (see NSArgument).
NS_EXPORT void NSDispatch(
    NSObject& receiver, NSSelector selector, std::span<const NSArgument> arguments, NSResult& result);

/// The same for a method whose result counts only as an object: null for a method that returns anything else.
NS_EXPORT NSId NSPerform(NSObject& receiver, NSSelector selector, std::span<const NSArgument> arguments);

/// Sends `selector` to an object with arguments of any C++ types that have a type code, and reads the result
/// as `R`.
///
/// A null receiver answers zero. As with any call, the caller keeps the receiver alive. Numbers are
/// converted, objects are checked; `R` void takes any result. Cost: one hash look-up and two conversions an
/// argument; no allocation unless the call is forwarded.
///
///     static const NSSelector compare("compare:");
///     auto order = NSSend<NSInteger>(a, compare, b);
template<typename R = void, typename... Args>
R NSSend(NSObject& receiver, NSSelector selector, const Args&... args)
{
    const std::array<NSArgument, sizeof...(Args)> arguments { NSArgument::of(args)... };
    NSResult result;
    NSDispatch(receiver, selector, arguments, result);
    return result.value().template as<R>();
}

template<typename R = void, typename T, typename... Args>
R NSSend(const NSRef<T>& receiver, NSSelector selector, const Args&... args)
{
    NSObject* object = NSObjectOf(receiver.get());
    return object ? NSSend<R>(*object, selector, args...) : R();
}
