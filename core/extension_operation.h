#pragma once

#include "LUMPlatform/NSSend.h"

namespace lum {

/// One operation of an extension set, told once for its function and for its table.
///
///     using Car = ExtensionOperation<"car", &firstOf>;
///     constexpr NSMethod kMethods[] = { Car::method() };
///     NSId LUMArray::car(const NSRef<NSArray>& array) { return Car::call(array); }
template<NSFixedString Selector, auto Function> struct ExtensionOperation {
    /// Calls `Function` itself. Should it ask once more whether the receiver's class has a method of its own,
    /// such a method could not reach what it stands in for without coming back to itself for ever.
    static consteval NSMethod method() { return NSMethodOf<Selector, Function>(); }

    /// Calls `Function`, or the receiver's own method when its class has one. A null receiver answers zero.
    /// The receiver and the arguments outlive the call, even if it drops their last other reference.
    template<typename T, typename... Arguments>
    static auto call(const NSRef<T>& receiver, const Arguments&... arguments)
    {
        using Result = std::invoke_result_t<decltype(Function), const NSRef<T>&, const Arguments&...>;
        static const NSSelector selector(Selector.view());
        const NSRef<T> kept = receiver;
        if (!kept)
            return Result();
        if (kept->isa().overridingMethod(selector))
            return NSSend<Result>(kept, selector, Arguments(arguments)...);
        return Function(kept, Arguments(arguments)...);
    }
};

}
