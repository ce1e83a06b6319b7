#pragma once

#include "LUMPlatform/NSObject.h"

#include <memory>
#include <span>

namespace platform {
struct Pixels;
}

/// An immutable picture of pixels, ready to be handed to a toolkit. Threads: any.
///
/// Rows go from the top to the bottom and pixels from left to right, without gaps; a pixel is four bytes,
/// red, green, blue and opacity, where the colours are not multiplied by the opacity.
///
///     auto icon = NSWorkspace::sharedWorkspace()->iconForFile("/usr/share/doc");
///     QImage shown(reinterpret_cast<const uchar*>(icon->pixels().data()), int(icon->pixelsWide()),
///         int(icon->pixelsHigh()), QImage::Format_RGBA8888); // shares the bytes: keep `icon` as long
class NS_EXPORT NSImage : public NSObject {
public:
    static const NSClass& classObject();

    /// A picture with a copy of these pixels. Null when a side is 0 or above 16,384, when `pixels` has not
    /// width * height * 4 bytes, and when there is not enough memory. C++ only
    static NSRef<NSImage> imageWithPixels(
        std::span<const std::byte> pixels, NSUInteger width, NSUInteger height);

    NSUInteger pixelsWide() const; ///< Never 0. Selector: pixelsWide
    NSUInteger pixelsHigh() const; ///< Never 0. Selector: pixelsHigh
    /// All pixels; valid while the image exists. C++ only
    std::span<const std::byte> pixels() const;

    NSId copy() const override; ///< Itself.

protected:
    explicit NSImage(std::shared_ptr<const platform::Pixels> pixels);
    ~NSImage() override;

private:
    const std::shared_ptr<const platform::Pixels> mPixels;
};
