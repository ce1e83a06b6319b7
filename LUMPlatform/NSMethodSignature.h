#pragma once

#include "LUMPlatform/NSObject.h"

#include <string_view>
#include <vector>

struct NSMethod;

/// The types of a method: of its result and of its arguments, the receiver "@" and the selector ":" included
/// as the first two. Immutable. Threads: any.
///
///     auto signature = track->methodSignatureForSelector(NSSelector("setTitle:"));
///     std::cout << signature->getArgumentTypeAtIndex(2); // @
class NS_EXPORT NSMethodSignature : public NSObject {
public:
    static const NSClass& classObject();

    /// Reads a list of type codes, result first: "i@:@" is an int result, receiver, selector, one object.
    /// "?" stands for a type that is not known (see NSArgument). Null when `types` is no such list.
    /// Selector: signatureWithObjCTypes:
    static NSRef<NSMethodSignature> signatureWithObjCTypes(std::string_view types);
    /// The types of an entry of a method table.
    static NSRef<NSMethodSignature> signatureOfMethod(const NSMethod& method);

    /// Arguments, receiver and selector included.
    /// Selector: numberOfArguments
    NSUInteger numberOfArguments() const { return mTypes.size() - 1; }
    /// The type code of an argument; 0 is the receiver, 1 the selector. Raises NSInvalidArgumentException
    /// past the last.
    /// Selector: getArgumentTypeAtIndex:
    const char* getArgumentTypeAtIndex(NSUInteger index) const;
    /// Selector: methodReturnType
    const char* methodReturnType() const { return mTypes[0]; }
    /// Bytes of the result; 0 for a method that returns nothing.
    /// Selector: methodReturnLength
    NSUInteger methodReturnLength() const;

    bool isEqual(const NSId& other) const override;
    NSUInteger hash() const override;

protected:
    explicit NSMethodSignature(std::vector<const char*> types);
    ~NSMethodSignature() override;

private:
    std::vector<const char*> mTypes; // result, receiver, selector, arguments
};
