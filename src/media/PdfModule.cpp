// The entry point of the separately loaded PDF library: hands out documents assembled with the
// qpdf code linked into this library.
#include "media/PdfAssembler.h"
#include "media/PdfLibrary.h"

namespace px::media {
namespace {

class PdfModule final : public PdfLibrary {
  public:
    std::unique_ptr<PdfDocument> newDocument() override { return std::make_unique<PdfAssembler>(); }
};

} // namespace
} // namespace px::media

extern "C" __attribute__((visibility("default"))) px::media::PdfLibrary* pxmenu_pdf_instance() {
    static px::media::PdfModule library;
    return &library;
}
