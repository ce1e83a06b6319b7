#include "LUMPlatform/NSSend.h"

#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSInvocation.h"
#include "LUMPlatform/NSMethodSignature.h"
#include "LUMPlatform/NSString.h"

namespace {

[[noreturn]] void wrongCount(
    const NSObject& receiver, NSSelector selector, std::size_t given, std::size_t wanted)
{
    throw NSException(NSInvalidArgumentException,
        NSString::stringWithUTF8String("-[" + std::string(receiver.isa().name()) + " "
            + std::string(selector.name()) + "] takes " + std::to_string(wanted) + " arguments, not "
            + std::to_string(given)));
}

void forward(NSObject& receiver, NSSelector selector, std::span<const NSArgument> arguments, NSResult& result)
{
    constexpr NSUInteger kHidden = 2;
    auto signature = receiver.methodSignatureForSelector(selector);
    if (!signature)
        receiver.doesNotRecognizeSelector(selector);
    if (signature->numberOfArguments() != arguments.size() + kHidden)
        wrongCount(receiver, selector, arguments.size(), signature->numberOfArguments() - kHidden);
    auto invocation = NSInvocation::invocationWithMethodSignature(signature);
    invocation->setSelector(selector);
    invocation->setTarget(NSShare(&receiver));
    for (std::size_t at = 0; at < arguments.size(); ++at)
        invocation->setArgument(arguments[at], at + kHidden);
    receiver.forwardInvocation(*invocation);
    result.set(invocation->result());
}

}

void NSDispatch(
    NSObject& receiver, NSSelector selector, std::span<const NSArgument> arguments, NSResult& result)
{
    const NSMethod* method = receiver.isa().instanceMethod(selector);
    if (!method)
        return forward(receiver, selector, arguments, result);
    if (method->argumentTypes.size() != arguments.size())
        wrongCount(receiver, selector, arguments.size(), method->argumentTypes.size());
    method->invoke(receiver, arguments, result);
}

NSId NSPerform(NSObject& receiver, NSSelector selector, std::span<const NSArgument> arguments)
{
    NSResult result;
    NSDispatch(receiver, selector, arguments, result);
    return NSShare(result.value().object());
}

void NSMethodDetail::nullForReference()
{
    throw NSException(NSInvalidArgumentException, "a dynamic call has null where an object is required");
}

const NSClass& NSMethodDetail::classArgument(const NSArgument& argument)
{
    if (argument.kind() != '#')
        throw NSException(
            NSInvalidArgumentException, "a dynamic call has another value where a class is wanted");
    return *argument.as<const NSClass*>();
}
