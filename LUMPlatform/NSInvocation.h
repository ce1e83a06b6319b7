#pragma once

#include "LUMPlatform/NSSend.h"

#include <memory>
#include <vector>

class NSMethodSignature;

/// A dynamic call as an object: target, selector, arguments, and a place for the result.
///
/// Object arguments are shared from the moment they are set, so a stored invocation never dangles;
/// retainArguments additionally keeps the target. Argument indexes count the receiver (0) and the selector
/// (1) as the first two. Threads: one at a time.
///
///     auto call = NSInvocation::invocationWithMethodSignature(track->methodSignatureForSelector(setTitle));
///     call->setSelector(setTitle);
///     call->setArgument(title, 2);
///     call->invokeWithTarget(track);
class NS_EXPORT NSInvocation : public NSObject {
public:
    static const NSClass& classObject();

    /// Null for a null signature.
    /// Selector: invocationWithMethodSignature:
    static NSRef<NSInvocation> invocationWithMethodSignature(const NSRef<NSMethodSignature>& signature);

    NSRef<NSMethodSignature> methodSignature() const; ///< Selector: methodSignature
    NSSelector selector() const { return mSelector; } ///< Selector: selector
    void setSelector(NSSelector selector) { mSelector = selector; } ///< Selector: setSelector:
    NSId target() const; ///< Selector: target
    /// Kept only once retainArguments was called; until then the target is a zeroing weak one.
    /// Selector: setTarget:
    void setTarget(const NSId& target);

    /// Stores an argument, converted to the signature's type. Raises NSInvalidArgumentException when the
    /// index is none of an argument, or the value does not fit.
    /// C++ form of setArgument:atIndex:
    template<typename T> void setArgument(const T& value, NSUInteger index)
    {
        store(NSArgument::of(value), index);
    }
    /// C++ form of getArgument:atIndex:
    template<typename T> T argument(NSUInteger index) const { return load(index).template as<T>(); }
    /// C++ form of setReturnValue:
    template<typename T> void setReturnValue(const T& value)
    {
        mResult.set(NSArgument::of(value).convertedTo(returnType()));
    }
    /// The result of the last call; zero before the first.
    /// C++ form of getReturnValue:
    template<typename T> T returnValue() const { return mResult.value().template as<T>(); }
    const NSArgument& result() const { return mResult.value(); }

    void retainArguments(); ///< Selector: retainArguments
    bool argumentsRetained() const { return mRetained; } ///< Selector: argumentsRetained

    void invoke(); ///< Calls the target; with a null one the result is zero. Selector: invoke
    /// Makes `target` the target and calls it. Raises what the method raises.
    /// Selector: invokeWithTarget:
    void invokeWithTarget(const NSId& target);

protected:
    explicit NSInvocation(const NSRef<NSMethodSignature>& signature);
    ~NSInvocation() override;

private:
    void store(const NSArgument& value, NSUInteger index);
    const NSArgument& load(NSUInteger index) const;
    const char* returnType() const;

    NSRef<NSMethodSignature> mSignature;
    NSSelector mSelector;
    struct Target;
    std::unique_ptr<Target> mTarget;
    std::vector<NSArgument> mArguments;
    std::vector<NSId> mObjects; // keeps the objects in mArguments, index by index
    NSResult mResult;
    bool mRetained = false;
};
