#include "media/PdfPageRender.h"

#include "media/ImageFile.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <mutex>
#include <poppler-document.h>
#include <poppler-image.h>
#include <poppler-page-renderer.h>
#include <poppler-page.h>
#include <vector>

namespace px::media {

struct PdfPageRender::Document {
    std::unique_ptr<poppler::document> pdf;
    poppler::page_renderer renderer;
};

namespace {

// poppler writes every syntax complaint about a damaged file to standard error; a damaged
// page simply renders as well as it can.
void silencePoppler() {
    static std::once_flag once;
    std::call_once(
        once, [] { poppler::set_debug_error_function([](const std::string&, void*) {}, nullptr); });
}

// The resolution to use for a page: `dpi`, or less when the image would be too large.
double budgetedDpi(const poppler::page& page, double dpi) {
    const poppler::rectf box = page.page_rect(poppler::crop_box);
    const double pixels = (box.width() * dpi / 72.0) * (box.height() * dpi / 72.0);
    if (pixels <= PdfPageRender::kMaxPagePixels) return dpi;
    return dpi * std::sqrt(PdfPageRender::kMaxPagePixels / pixels);
}

// The rendered RGB rows copied without their padding, as libvips wants them.
std::vector<unsigned char> packedRows(const poppler::image& image) {
    const std::size_t rowBytes = static_cast<std::size_t>(image.width()) * 3;
    std::vector<unsigned char> packed(rowBytes * image.height());
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(packed.data() + y * rowBytes, image.const_data() + y * image.bytes_per_row(),
                    rowBytes);
    return packed;
}

bool saveRendered(const poppler::image& image, double dpi, std::string_view key,
                  const std::string& path) {
    std::vector<unsigned char> pixels = packedRows(image);
    try {
        vips::VImage wrapped = vips::VImage::new_from_memory(
            pixels.data(), pixels.size(), image.width(), image.height(), 3, VIPS_FORMAT_UCHAR);
        const double pixelsPerMillimetre = dpi / 25.4;
        wrapped = wrapped.copy(vips::VImage::option()
                                   ->set("interpretation", VIPS_INTERPRETATION_sRGB)
                                   ->set("xres", pixelsPerMillimetre)
                                   ->set("yres", pixelsPerMillimetre));
        return saveImageWithExt(wrapped, key, path);
    } catch (const vips::VError&) {
        vips_error_clear();
        return false;
    }
}

} // namespace

PdfPageRender::PdfPageRender(std::unique_ptr<Document> document)
    : m_document(std::move(document)) {}

PdfPageRender::~PdfPageRender() = default;

std::unique_ptr<PdfPageRender> PdfPageRender::open(const std::string& path) {
    silencePoppler();
    ensureVipsStarted();
    auto document = std::make_unique<Document>();
    document->pdf.reset(poppler::document::load_from_file(path));
    if (!document->pdf || document->pdf->is_locked()) return nullptr;
    document->renderer.set_render_hints(poppler::page_renderer::antialiasing |
                                        poppler::page_renderer::text_antialiasing);
    document->renderer.set_image_format(poppler::image::format_rgb24);
    return std::unique_ptr<PdfPageRender>(new PdfPageRender(std::move(document)));
}

int PdfPageRender::pageCount() const {
    return m_document->pdf->pages();
}

bool PdfPageRender::savePage(int index, double dpi, std::string_view key,
                             const std::string& path) const {
    std::unique_ptr<poppler::page> page(m_document->pdf->create_page(index));
    if (!page) return false;
    const double resolution = budgetedDpi(*page, dpi);
    poppler::image image = m_document->renderer.render_page(page.get(), resolution, resolution);
    if (!image.is_valid() || image.format() != poppler::image::format_rgb24) return false;
    return saveRendered(image, resolution, key, path);
}

} // namespace px::media
