#include "LUMPlatform/NSObject.h"

#include "LUMPlatform/NSClass.h"
#include "LUMPlatform/NSException.h"
#include "LUMPlatform/NSInvocation.h"
#include "LUMPlatform/NSMethodSignature.h"
#include "LUMPlatform/NSSend.h"
#include "LUMPlatform/NSString.h"
#include "LUMPlatform/NSWeak.h"
#include "platform/objects/live_object_counter.h"
#include "platform/objects/object_end.h"

#include <cinttypes>
#include <cstdio>
#include <ostream>

namespace {

thread_local platform::EndQueue tEnds;

std::string addressOf(const NSObject* object)
{
    char text[24];
    std::snprintf(text, sizeof text, "0x%" PRIxPTR, reinterpret_cast<std::uintptr_t>(object));
    return text;
}

constexpr NSMethod kMethods[] = {
    NSMethodOf<"isKindOfClass:", &NSObject::isKindOfClass>(),
    NSMethodOf<"isEqual:", &NSObject::isEqual>(),
    NSMethodOf<"hash", &NSObject::hash>(),
    NSMethodOf<"description", &NSObject::description>(),
    NSMethodOf<"copy", &NSObject::copy>(),
    NSMethodOf<"mutableCopy", &NSObject::mutableCopy>(),
    NSMethodOf<"respondsToSelector:", &NSObject::respondsToSelector>(),
    NSMethodOf<"methodSignatureForSelector:", &NSObject::methodSignatureForSelector>(),
    NSMethodOf<"forwardInvocation:", &NSObject::forwardInvocation>(),
    NSMethodOf<"doesNotRecognizeSelector:", &NSObject::doesNotRecognizeSelector>(),
    NSMethodOf<"performSelector:", &NSObject::performSelector>(),
    NSMethodOf<"performSelector:withObject:", &NSObject::performSelectorWithObject>(),
};

}

const NSClass& NSObject::classObject()
{
    static const NSClass& type = NSClass::define("NSObject", nullptr, kMethods);
    return type;
}

NSObject::NSObject() noexcept
{
    platform::LiveObjectCounter::began();
}

NSObject::~NSObject()
{
    // 0 after end(). The maker's 1, and perhaps weak references, when the constructor of a class below threw.
    const auto count = mCount.load(std::memory_order_relaxed);
    assert((count & ~kHasWeak) <= 1 && "destroyed while references are left");
    if (count & kHasWeak)
        weakEnds();
    platform::LiveObjectCounter::ended();
}

void NSObject::end(std::uint64_t before) const noexcept
{
    if (before & kHasWeak)
        weakEnds();
    tEnds.end(
        this,
        [](const NSObject* object) {
            object->mCount.store(0, std::memory_order_relaxed);
            delete object;
        },
        [](const NSObject* object) -> std::atomic<std::uint64_t>& { return object->mCount; });
}

bool NSObject::releaseUnlessLast() const noexcept
{
    auto count = mCount.load(std::memory_order_relaxed);
    while ((count & ~kHasWeak) > 1) {
        if (mCount.compare_exchange_weak(
                count, count - 1, std::memory_order_release, std::memory_order_relaxed))
            return true;
    }
    return false;
}

bool NSObject::retainUnlessEnding() const noexcept
{
    auto count = mCount.load(std::memory_order_relaxed);
    while ((count & ~kHasWeak) != 0) {
        if (__libc_single_threaded) {
            NSCountUp(mCount);
            return true;
        }
        if (mCount.compare_exchange_weak(
                count, count + 1, std::memory_order_acquire, std::memory_order_relaxed))
            return true;
    }
    return false;
}

bool NSObject::isKindOfClass(const NSClass& type) const
{
    return isa().isSubclassOf(type);
}

bool NSObject::isEqual(const NSId& other) const
{
    return other.get() == this;
}

NSUInteger NSObject::hash() const
{
    // Objects are aligned, so the low bits tell nothing; the shift keeps neighbours apart.
    return reinterpret_cast<std::uintptr_t>(this) >> 4;
}

NSRef<NSString> NSObject::description() const
{
    return NSString::stringWithUTF8String("<" + std::string(isa().name()) + ": " + addressOf(this) + ">");
}

NSId NSObject::copy() const
{
    doesNotRecognizeSelector(NSSelector("copyWithZone:"));
}

NSId NSObject::mutableCopy() const
{
    doesNotRecognizeSelector(NSSelector("mutableCopyWithZone:"));
}

bool NSObject::respondsToSelector(NSSelector selector) const
{
    return isa().instanceMethod(selector) != nullptr;
}

NSRef<NSMethodSignature> NSObject::methodSignatureForSelector(NSSelector selector) const
{
    return isa().instanceMethodSignature(selector);
}

void NSObject::forwardInvocation(NSInvocation& invocation)
{
    doesNotRecognizeSelector(invocation.selector());
}

void NSObject::doesNotRecognizeSelector(NSSelector selector) const
{
    throw NSException(NSInvalidArgumentException,
        NSString::stringWithUTF8String("-[" + std::string(isa().name()) + " " + std::string(selector.name())
            + "]: unrecognized selector sent to instance " + addressOf(this)));
}

NSId NSObject::performSelector(NSSelector selector)
{
    return NSPerform(*this, selector, {});
}

NSId NSObject::performSelectorWithObject(NSSelector selector, const NSId& object)
{
    const NSArgument argument = NSArgument::of(object);
    return NSPerform(*this, selector, { &argument, 1 });
}

bool NSEqual(const NSId& a, const NSId& b)
{
    return a == b || (a && b && a->isEqual(b));
}

std::ostream& NSPrint(std::ostream& stream, const NSObject* object)
{
    return stream << (object ? object->description()->utf8() : "(null)");
}
