#include "actions/PixbufImage.h"

#include "support/GlibOwners.h"

#include <algorithm>
#include <gdk-pixbuf/gdk-pixbuf.h>
#include <memory>
#include <unistd.h>

namespace px::pixbuf {

namespace {

using Pixbuf = glib::Object<GdkPixbuf>;

Pixbuf load(const std::string& imagePath, int size) {
    GError* error = nullptr;
    Pixbuf image(gdk_pixbuf_new_from_file_at_scale(imagePath.c_str(), size, size, TRUE, &error));
    if (error) g_error_free(error);
    return image;
}

// The image centred on a transparent square canvas.
Pixbuf onSquare(GdkPixbuf* image, int size) {
    Pixbuf canvas(gdk_pixbuf_new(GDK_COLORSPACE_RGB, TRUE, 8, size, size));
    if (!canvas) return nullptr;
    gdk_pixbuf_fill(canvas.get(), 0x00000000);
    const int width = std::min(size, gdk_pixbuf_get_width(image));
    const int height = std::min(size, gdk_pixbuf_get_height(image));
    gdk_pixbuf_composite(image, canvas.get(), (size - width) / 2, (size - height) / 2, width,
                         height, (size - width) / 2, (size - height) / 2, 1.0, 1.0,
                         GDK_INTERP_BILINEAR, 255);
    return canvas;
}

} // namespace

bool renderSquarePNG(const std::string& imagePath, const std::string& pngPath, int size) {
    if (size <= 0) return false;
    Pixbuf image = load(imagePath, size);
    if (!image) return false;
    Pixbuf square = onSquare(image.get(), size);
    if (!square) return false;
    GError* error = nullptr;
    if (gdk_pixbuf_save(square.get(), pngPath.c_str(), "png", &error, nullptr)) return true;
    g_error_free(error);
    ::unlink(pngPath.c_str());
    return false;
}

} // namespace px::pixbuf
