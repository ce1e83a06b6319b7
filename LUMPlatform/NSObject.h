#pragma once

#include "LUMPlatform/NSCount.h"
#include "LUMPlatform/NSExport.h"
#include "LUMPlatform/NSRef.h"
#include "LUMPlatform/NSSelector.h"
#include "LUMPlatform/NSTypes.h"

#include <atomic>
#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <string_view>
#include <type_traits>
#include <typeinfo>

class NSClass;
class NSInvocation;
class NSMethodSignature;
class NSString;
template<typename T> class NSInstance;

/// The root of all classes: counted ownership, identity, equality, text, and dynamic calls.
///
/// Objects are made by NSMake<T>(...) and end with their last NSRef; there is no other way, since
/// constructors and destructors of the classes are protected. Threads: the count is atomic and any thread may
/// drop the last reference; everything else follows the class: immutable ones may be shared, mutable ones
/// belong to one thread at a time.
///
///     class Track : public NSObject {
///     public:
///         static const NSClass& classObject(); // its name, superclass and methods
///         void setTitle(const NSRef<NSString>& title);
///     };
///     NSRef<Track> track = NSMake<Track>();
class NS_EXPORT NSObject {
public:
    NSObject(const NSObject&) = delete;
    NSObject& operator=(const NSObject&) = delete;

    static const NSClass& classObject();
    /// The class this object was made as. While a constructor runs it is the root class.
    virtual const NSClass& isa() const { return classObject(); }
    /// Selector: isKindOfClass:
    bool isKindOfClass(const NSClass& type) const;

    /// Equality by value, for the classes that have one; here identity. Never equal to null.
    /// Selector: isEqual:
    virtual bool isEqual(const NSId& other) const;
    /// Equal objects have equal hashes.
    /// Selector: hash
    virtual NSUInteger hash() const;
    /// The object in words; what `%@` and operator<< print. Never null.
    /// Selector: description
    virtual NSRef<NSString> description() const;

    /// An immutable copy (an immutable object answers itself), owned by the caller. Raises
    /// NSInvalidArgumentException for a class that cannot be copied.
    /// Selector: copy
    virtual NSId copy() const;
    /// A mutable copy, owned by the caller; raises as copy does.
    /// Selector: mutableCopy
    virtual NSId mutableCopy() const;

    /// Whether a dynamic call of `selector` is answered, by a method or by forwarding.
    /// Selector: respondsToSelector:
    virtual bool respondsToSelector(NSSelector selector) const;
    /// Types of the method that answers `selector`; null when none does.
    /// Selector: methodSignatureForSelector:
    virtual NSRef<NSMethodSignature> methodSignatureForSelector(NSSelector selector) const;
    /// Where a dynamic call goes that no method answers but whose signature is known; here it raises as
    /// doesNotRecognizeSelector does.
    /// Selector: forwardInvocation:
    virtual void forwardInvocation(NSInvocation& invocation);
    /// Raises NSInvalidArgumentException: "-[Class sel]: unrecognized selector sent to instance 0x...".
    /// Selector: doesNotRecognizeSelector:
    [[noreturn]] void doesNotRecognizeSelector(NSSelector selector) const;

    /// Sends `selector` and answers its object result; null for a method that returns anything else.
    /// Selector: performSelector:
    virtual NSId performSelector(NSSelector selector);
    /// The same with one argument.
    /// Selector: performSelector:withObject:
    virtual NSId performSelectorWithObject(NSSelector selector, const NSId& object);

    void retain() const noexcept
    {
        [[maybe_unused]] auto before = NSCountUp(mCount);
        assert((before & ~kHasWeak) != 0 && "retained after its end");
    }
    void release() const noexcept
    {
        auto before = NSCountDown(mCount);
        assert((before & ~kHasWeak) != 0 && "released after its end");
        if ((before & ~kHasWeak) == 1)
            end(before);
    }

    /// Gives a reference back unless it is the last; whether it did. For who must not run the object's end
    /// here, and hands the last reference on instead.
    [[nodiscard]] bool releaseUnlessLast() const noexcept;

protected:
    NSObject() noexcept;
    virtual ~NSObject();

private:
    template<typename T> friend class NSWeak;
    friend struct NSWeakTable;

    /// Set in the count once a weak reference exists, so that others pay nothing for them at their end.
    static constexpr std::uint64_t kHasWeak = std::uint64_t { 1 } << 63;

    void end(std::uint64_t before) const noexcept;
    void weakEnds() const noexcept;
    bool retainUnlessEnding() const noexcept;

    mutable std::atomic<std::uint64_t> mCount { 1 };
};

/// What every protocol derives from: an abstract class of operations that an NSObject class declares by
/// deriving from it beside NSObject. Whether an object declares a protocol is NSCast<Protocol>(object).
class NS_EXPORT NSProtocol {
public:
    /// The conforming object itself; filled in by NSMake.
    virtual NSObject* asObject() const = 0;

protected:
    virtual ~NSProtocol() = default;
};

/// The most derived type of every object: T as made by NSMake, with its class and the way back from its
/// protocols.
template<typename T> class NS_EXPORT NSInstance final : public T {
public:
    template<typename... Args> explicit NSInstance(Args&&... args) : T(std::forward<Args>(args)...) { }

    // These override what the root class and each protocol of T declare; without protocols the second
    // overrides nothing, so neither can say so.
    virtual const NSClass& isa() const { return T::classObject(); } // NOLINT(modernize-use-override)
    virtual NSObject* asObject() const // NOLINT(modernize-use-override)
    {
        return const_cast<NSInstance*>(this);
    }
};

/// Makes an object of class T; the arguments go to its constructor. Throws what the constructor throws.
template<typename T, typename... Args> NSRef<T> NSMake(Args&&... args)
{
    return NSAdopt<T>(new NSInstance<T>(std::forward<Args>(args)...));
}

/// The pointer as one to a `T` (a class or a protocol); null when the object is none, or null.
///
/// An object that NSMake made as a T is told by one comparison; a search through its bases, ten times slower,
/// is left for the others. NSInstance is exported so that it has one identity in a program of several
/// libraries.
template<typename T, typename U> T* NSDowncast(U* object)
{
    if constexpr (std::is_base_of_v<U, T> && std::is_base_of_v<NSObject, U> && !std::is_final_v<T>)
        if (object && &typeid(*object) == &typeid(NSInstance<T>))
            return static_cast<T*>(object);
    return dynamic_cast<T*>(object);
}

/// The object as a `T` (a class or a protocol); null when it is none, or null.
template<typename T, typename U> NSRef<T> NSCast(const NSRef<U>& object)
{
    if constexpr (std::convertible_to<U*, T*>)
        return object;
    else
        return NSShare(NSDowncast<T>(object.get()));
}

/// The C++ types whose values are numbers as objects: truth values, integers and the two floating types.
template<typename T>
concept NSNumeric = std::is_same_v<T, bool> || std::is_same_v<T, char> || std::is_same_v<T,
    signed char> || std::is_same_v<T, unsigned char> || std::is_same_v<T, short> || std::is_same_v<T,
    unsigned short> || std::is_same_v<T, int> || std::is_same_v<T, unsigned> || std::is_same_v<T,
    long> || std::is_same_v<T, unsigned long> || std::is_same_v<T, long long> || std::is_same_v<T,
    unsigned long long> || std::is_same_v<T, float> || std::is_same_v<T, double>;

/// Where any object is wanted, a C++ number gives an NSNumber, and text in UTF-8 or UTF-16 an NSString:
///
///     dictionary->setObject(5, "count");
template<> struct NSBoxing<NSObject> {
    NS_EXPORT static NSId box(const char* utf8);
    NS_EXPORT static NSId box(std::string_view utf8);
    NS_EXPORT static NSId box(std::u16string_view characters);
    template<NSNumeric T> NS_EXPORT static NSId box(T value);
};

/// Equality that takes null: both null, or equal by isEqual.
NS_EXPORT bool NSEqual(const NSId& a, const NSId& b);

/// Prints description(), or "(null)" for null.
NS_EXPORT std::ostream& NSPrint(std::ostream& stream, const NSObject* object);
inline std::ostream& operator<<(std::ostream& stream, const NSObject& object)
{
    return NSPrint(stream, &object);
}
template<typename T> std::ostream& operator<<(std::ostream& stream, const NSRef<T>& object)
{
    return NSPrint(stream, NSObjectOf(object.get()));
}
