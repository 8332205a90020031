#include "media/Imaging.h"

#include "media/ModuleLoader.h"

#include <mutex>

namespace px::media {

namespace {

const ModuleSpec kImagingModule{"pxmenu-imaging.so", kImagingEntryPoint, "image library"};

} // namespace

std::optional<std::string> imagingLibraryPath() {
    return findModule(kImagingModule);
}

ErrorOr<Imaging*> imaging() {
    static std::once_flag once;
    static std::optional<ErrorOr<Imaging*>> loaded;
    std::call_once(once, [] {
        ErrorOr<void*> module = loadModule(kImagingModule);
        if (module.isError())
            loaded.emplace(module.releaseError());
        else
            loaded.emplace(static_cast<Imaging*>(module.value()));
    });
    return *loaded;
}

} // namespace px::media
