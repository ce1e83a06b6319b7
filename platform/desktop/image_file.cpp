#include "platform/desktop/image_file.h"

#include <algorithm>
#include <gdk-pixbuf/gdk-pixbuf.h>
#include <sys/stat.h>

namespace platform {

namespace {

constexpr off_t kLargestFile = 4 << 20;
constexpr int kLargestSide = 4096;

struct Unref {
    void operator()(GdkPixbuf* picture) const { g_object_unref(picture); }
};
using Picture = std::unique_ptr<GdkPixbuf, Unref>;

Picture load(const std::string& path, int longestSide)
{
    struct stat found = {};
    if (stat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode) || found.st_size > kLargestFile)
        return nullptr;
    int width = 0;
    int height = 0;
    GdkPixbufFormat* const format = gdk_pixbuf_get_file_info(path.c_str(), &width, &height);
    if (!format || width > kLargestSide || height > kLargestSide)
        return nullptr;
    if (width > longestSide || height > longestSide || gdk_pixbuf_format_is_scalable(format))
        return Picture(
            gdk_pixbuf_new_from_file_at_scale(path.c_str(), longestSide, longestSide, TRUE, nullptr));
    return Picture(gdk_pixbuf_new_from_file(path.c_str(), nullptr));
}

}

std::shared_ptr<const Pixels> readImageFile(const std::string& path, int longestSide)
{
    const Picture picture = load(path, longestSide);
    if (!picture || gdk_pixbuf_get_bits_per_sample(picture.get()) != 8)
        return nullptr;
    const auto width = static_cast<std::size_t>(gdk_pixbuf_get_width(picture.get()));
    const auto height = static_cast<std::size_t>(gdk_pixbuf_get_height(picture.get()));
    const auto rowBytes = static_cast<std::size_t>(gdk_pixbuf_get_rowstride(picture.get()));
    const std::size_t channels = gdk_pixbuf_get_has_alpha(picture.get()) ? 4 : 3;
    const guint8* const first = gdk_pixbuf_read_pixels(picture.get());

    Pixels pixels { width, height, std::vector<std::byte>(width * height * 4, std::byte { 0xFF }) };
    auto to = pixels.bytes.begin();
    for (std::size_t y = 0; y < height; ++y) {
        const auto* from = reinterpret_cast<const std::byte*>(first + y * rowBytes);
        for (std::size_t x = 0; x < width; ++x, from += channels, to += 4)
            std::copy_n(from, channels, to);
    }
    return std::make_shared<const Pixels>(std::move(pixels));
}

}
