#pragma once

#include <cassert>
#include <concepts>
#include <cstddef>
#include <type_traits>
#include <utility>

class NSObject;
template<typename T> class NSRef;

/// How a reference to `T` is made from a plain C++ value; a class that has such a form specialises this with
/// static functions `box`. NSString does, so that `NSRef<NSString> name = "a"` works, and so do numbers.
template<typename T> struct NSBoxing {
};

template<typename T, typename Value>
concept NSBoxable = requires(Value&& value)
{
    {
        NSBoxing<T>::box(std::forward<Value>(value))
        } -> std::same_as<NSRef<T>>;
};

template<typename T> inline constexpr bool NSIsRef = false;
template<typename T> inline constexpr bool NSIsRef<NSRef<T>> = true;

/// The object behind a pointer to a class or to a protocol (an abstract class derived from NSProtocol).
template<typename T> NSObject* NSObjectOf(T* pointer)
{
    if constexpr (std::is_convertible_v<T*, NSObject*>)
        return pointer;
    else
        return pointer ? pointer->asObject() : nullptr;
}

/// A shared reference to an object of class `T`, or to an object that conforms to the protocol `T`; may be
/// null.
///
/// Copying shares ownership; the object ends with its last reference. A call through a null reference
/// asserts: null is data, so test it. Objects come into being by NSMake. Threads: like a plain pointer, one
/// reference is used by one thread at a time; the count behind it is atomic, so copies may live on different
/// threads.
///
///     NSRef<NSString> title = "Prelude"; // made from text; the last copy to go ends it
///     NSId element = title; // a reference to a base class
///     if (auto text = NSCast<NSString>(element))
///         std::cout << text->length();
template<typename T> class [[nodiscard]] NSRef {
public:
    using Object = T;

    constexpr NSRef() = default;
    constexpr NSRef(std::nullptr_t) { }
    NSRef(const NSRef& other) : mObject(other.mObject)
    {
        if (mObject)
            NSObjectOf(mObject)->retain();
    }
    NSRef(NSRef&& other) noexcept : mObject(other.leak()) { }
    template<typename U>
    requires std::convertible_to<U*, T*> NSRef(NSRef<U> other)
    noexcept : mObject(other.leak()) { }
    /// From a protocol to the root class: the conforming object itself.
    template<typename U>
    requires(std::same_as<T, NSObject> && !std::convertible_to<U*, NSObject*>) NSRef(NSRef<U> other)
    noexcept : mObject(NSObjectOf(other.leak())) { }
    /// From a plain C++ value, for the classes that have such a form (see NSBoxing).
    template<typename Value>
    requires(!NSIsRef<std::remove_cvref_t<Value>> && NSBoxable<T, Value>) NSRef(Value&& value)
        : NSRef(NSBoxing<T>::box(std::forward<Value>(value)))
    {
    }
    /// The slot is empty before the object dies, so the object's end never sees a half-dead reference.
    ~NSRef()
    {
        if (T* last = leak())
            NSObjectOf(last)->release();
    }
    NSRef& operator=(NSRef other) noexcept
    {
        std::swap(mObject, other.mObject);
        return *this;
    }

    T* get() const { return mObject; }
    T* operator->() const
    {
        assert(mObject);
        return mObject;
    }
    T& operator*() const
    {
        assert(mObject);
        return *mObject;
    }
    explicit operator bool() const { return mObject != nullptr; }
    /// Gives up ownership without releasing; the caller owns one count.
    [[nodiscard]] T* leak() noexcept { return std::exchange(mObject, nullptr); }

    friend void swap(NSRef& a, NSRef& b) noexcept { std::swap(a.mObject, b.mObject); }

    /// Identity, not equality: the same object, or both null. See isEqual.
    template<typename U> friend bool operator==(const NSRef& a, const NSRef<U>& b)
    {
        return NSObjectOf(a.get()) == NSObjectOf(b.get());
    }
    friend bool operator==(const NSRef& a, std::nullptr_t) { return a.mObject == nullptr; }

private:
    template<typename U> friend NSRef<U> NSAdopt(U*);
    explicit NSRef(T* object) : mObject(object) { }

    T* mObject = nullptr;
};

/// Takes over one count that the caller owns.
template<typename T> NSRef<T> NSAdopt(T* object)
{
    return NSRef<T>(object);
}

/// Shares an object that something else keeps alive, `this` for instance.
template<typename T> NSRef<T> NSShare(T* object)
{
    if (object)
        NSObjectOf(object)->retain();
    return NSAdopt(object);
}

/// A reference to any object.
using NSId = NSRef<NSObject>;
