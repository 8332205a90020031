#include "media/PdfLibrary.h"

#include "media/ModuleLoader.h"

#include <mutex>
#include <optional>

namespace px::media {

ErrorOr<PdfLibrary*> pdfLibrary() {
    static std::once_flag once;
    static std::optional<ErrorOr<PdfLibrary*>> loaded;
    std::call_once(once, [] {
        ErrorOr<void*> module = loadModule({"pxmenu-pdf.so", kPdfEntryPoint, "PDF library", true});
        if (module.isError())
            loaded.emplace(module.releaseError());
        else
            loaded.emplace(static_cast<PdfLibrary*>(module.value()));
    });
    return *loaded;
}

} // namespace px::media
