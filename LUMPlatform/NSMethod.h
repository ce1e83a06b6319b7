#pragma once

#include "LUMPlatform/NSArgument.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

/// One entry of a class's method table: a selector, the types its function has, and a way to call it.
///
/// Made by NSMethodOf alone, which takes arity and type codes from the function, so they cannot disagree with
/// it.
struct NSMethod {
    /// Calls the function on `self`. `arguments` holds as many as argumentTypes.
    using Invoke = void (*)(NSObject& self, std::span<const NSArgument> arguments, NSResult& result);

    std::string_view selector;
    const char* returnType;
    std::span<const char* const> argumentTypes; ///< Without the receiver and the selector.
    Invoke invoke;
    bool returnsTruth = false; ///< A truth value, which has the type code of a char.
};

/// A text that can be a template argument.
template<std::size_t N> struct NSFixedString {
    char text[N];
    consteval NSFixedString(const char (&literal)[N]) { std::copy_n(literal, N, text); }
    constexpr std::string_view view() const { return { text, N - 1 }; }
};

namespace NSMethodDetail {

[[noreturn]] NS_EXPORT void nullForReference();
NS_EXPORT const NSClass& classArgument(const NSArgument& argument);

template<typename P> using Stored = std::remove_cvref_t<P>;

template<typename R, typename Self, typename... P> struct Types {
    using Return = R;
    using Receiver = Self;
    static constexpr std::size_t kArity = sizeof...(P);
    static constexpr const char* kReturn = NSTypeCode<Stored<R>>::value;
    static constexpr std::array<const char*, kArity> kArguments { NSTypeCode<Stored<P>>::value... };

    template<auto Function>
    static void invoke(NSObject& self, std::span<const NSArgument> arguments, NSResult& result)
    {
        call<Function>(self, arguments.data(), result, std::index_sequence_for<P...>());
    }

private:
    /// A parameter holds its converted value while the call runs.
    template<typename Param> static auto argument(const NSArgument& value)
    {
        using Plain = Stored<Param>;
        if constexpr (std::is_base_of_v<NSObject, Plain>) {
            static_assert(std::is_reference_v<Param>, "objects are passed by reference");
            Plain* object = value.objectAs<Plain>();
            if (!object)
                nullForReference();
            return std::ref(*object);
        } else if constexpr (std::is_same_v<Plain, NSClass>)
            return std::cref(classArgument(value));
        else if constexpr (NSIsRef<Plain> && std::is_reference_v<Param>)
            return Borrowed<typename Plain::Object> { NSAdopt(value.objectAs<typename Plain::Object>()) };
        else if constexpr (std::is_same_v<Plain, bool>)
            return value.as<signed char>() != 0; // as which truth values travel
        else
            return value.as<Plain>();
    }
    /// The caller keeps its arguments alive, so a parameter that is only looked at needs no count of its own.
    template<typename T> struct Borrowed {
        NSRef<T> reference;
        explicit Borrowed(NSRef<T> borrowed) : reference(std::move(borrowed)) { }
        Borrowed(const Borrowed&) = delete;
        Borrowed& operator=(const Borrowed&) = delete;
        ~Borrowed() { (void)reference.leak(); }
        operator const NSRef<T>&() const { return reference; }
    };

    template<auto Function, std::size_t... I>
    static void call(NSObject& self, [[maybe_unused]] const NSArgument* arguments, NSResult& result,
        std::index_sequence<I...>)
    {
        auto invoke = [&]() -> R {
            if constexpr (std::is_member_function_pointer_v<decltype(Function)>)
                return (receiver(self).*Function)(argument<P>(arguments[I])...);
            else if constexpr (NSIsRef<Stored<Self>>) {
                using Object = typename Stored<Self>::Object;
                const Borrowed<Object> borrowed(NSAdopt(&static_cast<Object&>(self)));
                return Function(borrowed.reference, argument<P>(arguments[I])...);
            } else
                return Function(receiver(self), argument<P>(arguments[I])...);
        };
        if constexpr (std::is_void_v<R>) {
            invoke();
            result.set(NSArgument());
        } else if constexpr (NSIsRef<Stored<R>>)
            result.take(invoke());
        else
            result.set(NSArgument::of<Stored<R>>(invoke()));
    }

    /// Tables belong to classes, so the receiver has the type; only a protocol needs a real cast.
    static auto& receiver(NSObject& self)
    {
        using Class = std::remove_reference_t<Self>;
        if constexpr (std::is_base_of_v<NSObject, std::remove_cv_t<Class>>)
            return static_cast<Class&>(self);
        else
            return dynamic_cast<Class&>(self);
    }
};

template<typename F> struct Signature;
template<typename R, typename C, typename... P> struct Signature<R (C::*)(P...)> : Types<R, C&, P...> {
};
template<typename R, typename C, typename... P>
struct Signature<R (C::*)(P...) const> : Types<R, const C&, P...> {
};
template<typename R, typename C, typename... P>
struct Signature<R (C::*)(P...) noexcept> : Types<R, C&, P...> {
};
template<typename R, typename C, typename... P>
struct Signature<R (C::*)(P...) const noexcept> : Types<R, const C&, P...> {
};
template<typename R, typename Self, typename... P>
struct Signature<R (*)(Self, P...)> : Types<R, Self, P...> {
};

}

/// The table entry that calls `Function` for the selector text: a member function, or a free function of an
/// extension set, which takes the receiver first. A wrong number of colons does not compile.
///
///     constexpr NSMethod kMethods[] = {
///         NSMethodOf<"setTitle:", &Track::setTitle>(),
///         NSMethodOf<"firstWord", &Words::firstWord>(),
///     };
template<NSFixedString Selector, auto Function> consteval NSMethod NSMethodOf()
{
    using S = NSMethodDetail::Signature<decltype(Function)>;
    static_assert(std::count(Selector.text, Selector.text + Selector.view().size(), ':') == S::kArity,
        "one colon per argument");
    static_assert(S::kReturn != nullptr, "give the result's structure a type code (NSTypeCode)");
    return { Selector.view(), S::kReturn, S::kArguments, &S::template invoke<Function>,
        std::is_same_v<NSMethodDetail::Stored<typename S::Return>, bool> };
}
