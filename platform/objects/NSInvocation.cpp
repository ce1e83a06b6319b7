#include "LUMPlatform/NSInvocation.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSMethodSignature.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSWeak.h"

namespace {

constexpr NSUInteger kHidden = 2; // the receiver and the selector come before the arguments

constexpr NSMethod kMethods[] = {
    NSMethodOf<"methodSignature", &NSInvocation::methodSignature>(),
    NSMethodOf<"selector", &NSInvocation::selector>(),
    NSMethodOf<"setSelector:", &NSInvocation::setSelector>(),
    NSMethodOf<"target", &NSInvocation::target>(),
    NSMethodOf<"setTarget:", &NSInvocation::setTarget>(),
    NSMethodOf<"retainArguments", &NSInvocation::retainArguments>(),
    NSMethodOf<"argumentsRetained", &NSInvocation::argumentsRetained>(),
    NSMethodOf<"invoke", &NSInvocation::invoke>(),
    NSMethodOf<"invokeWithTarget:", &NSInvocation::invokeWithTarget>(),
};

}

struct NSInvocation::Target {
    NSWeak<NSObject> weak;
    NSId kept;
};

const NSClass& NSInvocation::classObject()
{
    static const NSClass& type = NSClass::define("NSInvocation", &NSObject::classObject(), kMethods);
    return type;
}

NSInvocation::NSInvocation(const NSRef<NSMethodSignature>& signature)
    : mSignature(signature), mTarget(std::make_unique<Target>())
{
    for (NSUInteger at = kHidden; at < signature->numberOfArguments(); ++at)
        mArguments.push_back(NSArgument::zero(signature->getArgumentTypeAtIndex(at)));
    mObjects.resize(mArguments.size());
    mResult.set(NSArgument::zero(returnType()));
}

NSInvocation::~NSInvocation() = default;

NSRef<NSInvocation> NSInvocation::invocationWithMethodSignature(const NSRef<NSMethodSignature>& signature)
{
    return signature ? NSMake<NSInvocation>(signature) : nullptr;
}

NSRef<NSMethodSignature> NSInvocation::methodSignature() const
{
    return mSignature;
}

NSId NSInvocation::target() const
{
    return mTarget->kept ? mTarget->kept : mTarget->weak.get();
}

void NSInvocation::setTarget(const NSId& target)
{
    mTarget->weak = target;
    mTarget->kept = mRetained ? target : nullptr;
}

void NSInvocation::retainArguments()
{
    mRetained = true;
    mTarget->kept = target();
}

void NSInvocation::invoke()
{
    invokeWithTarget(target());
}

void NSInvocation::invokeWithTarget(const NSId& target)
{
    NSId kept = target; // `target` may be a reference into something the call changes
    setTarget(kept);
    NSResult result;
    if (kept)
        NSDispatch(*kept, mSelector, mArguments, result);
    mResult.set(kept ? result.value().convertedTo(returnType()) : NSArgument::zero(returnType()));
}

const char* NSInvocation::returnType() const
{
    return mSignature->methodReturnType();
}

void NSInvocation::store(const NSArgument& value, NSUInteger index)
{
    load(index);
    NSArgument& argument = mArguments[index - kHidden];
    argument = value.convertedTo(argument.code());
    mObjects[index - kHidden] = NSShare(argument.object());
}

const NSArgument& NSInvocation::load(NSUInteger index) const
{
    if (index < kHidden || index - kHidden >= mArguments.size())
        throw NSException(NSInvalidArgumentException,
            NSString::stringWithUTF8String("an invocation of " + std::to_string(mArguments.size() + kHidden)
                + " arguments has none to set or read at index " + std::to_string(index)));
    return mArguments[index - kHidden];
}
