#include "LUMPlatform/NSImage.h"

#include "LUMPlatform/NSClass.h"
#include "platform/desktop/pixels.h"

#include <new>

namespace {

constexpr NSUInteger kLongestSide = 16384;

constexpr NSMethod kMethods[] = {
    NSMethodOf<"pixelsWide", &NSImage::pixelsWide>(),
    NSMethodOf<"pixelsHigh", &NSImage::pixelsHigh>(),
};

}

const NSClass& NSImage::classObject()
{
    static const NSClass& type = NSClass::define("NSImage", &NSObject::classObject(), kMethods);
    return type;
}

NSImage::NSImage(std::shared_ptr<const platform::Pixels> pixels) : mPixels(std::move(pixels)) { }

NSImage::~NSImage() = default;

NSRef<NSImage> NSImage::imageWithPixels(
    std::span<const std::byte> pixels, NSUInteger width, NSUInteger height)
{
    if (width == 0 || height == 0 || width > kLongestSide || height > kLongestSide
        || pixels.size() != width * height * 4)
        return nullptr;
    try {
        platform::Pixels copy { width, height, { pixels.begin(), pixels.end() } };
        return NSMake<NSImage>(std::make_shared<const platform::Pixels>(std::move(copy)));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

NSUInteger NSImage::pixelsWide() const
{
    return mPixels->width;
}

NSUInteger NSImage::pixelsHigh() const
{
    return mPixels->height;
}

std::span<const std::byte> NSImage::pixels() const
{
    return mPixels->bytes;
}

NSId NSImage::copy() const
{
    return NSShare(const_cast<NSImage*>(this));
}
