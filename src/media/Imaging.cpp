#include "media/Imaging.h"

#include "support/FileIO.h"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <mutex>
#include <vector>

namespace px::media {
namespace {

constexpr const char* kLibraryName = "pxmenu-imaging.so";

// "<prefix>/lib/pxmenu" for a program installed as "<prefix>/bin/<name>", wherever the prefix.
std::string besideProgram() {
    std::error_code failed;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed);
    if (failed) return {};
    return (program.parent_path().parent_path() / "lib" / "pxmenu").string();
}

// PXMENU_LIBDIR, when set, is the only place looked at (to run a library built elsewhere);
// otherwise the build tree, the folder beside the installed program, the configured location.
std::vector<std::string> libraryFolders() {
    if (const char* custom = std::getenv("PXMENU_LIBDIR"); custom && *custom) return {custom};
    return {PX_BUILD_LIBDIR, besideProgram(), PX_INSTALL_LIBDIR};
}

std::optional<std::string> findLibrary() {
    for (const std::string& folder : libraryFolders()) {
        std::string candidate = folder + "/" + kLibraryName;
        if (io::exists(candidate)) return candidate;
    }
    return std::nullopt;
}

std::string lastLoaderError() {
    const char* message = ::dlerror();
    return message ? message : "unknown error";
}

// The handle is never closed: libvips keeps worker threads that run the library's code. Symbols
// are bound lazily, as for a program's own libraries: binding all of the hundred libraries'
// symbols up front costs more than converting a small image.
ErrorOr<Imaging*> load() {
    const std::optional<std::string> path = findLibrary();
    if (!path) return Error{std::string("the image library ") + kLibraryName + " is not installed"};
    void* handle = ::dlopen(path->c_str(), RTLD_LAZY | RTLD_LOCAL);
    if (!handle) return Error{"cannot load the image library: " + lastLoaderError()};
    using Entry = Imaging* (*)();
    auto entry = reinterpret_cast<Entry>(::dlsym(handle, kImagingEntryPoint));
    if (!entry) return Error{"the image library is damaged: " + lastLoaderError()};
    return entry();
}

} // namespace

std::optional<std::string> imagingLibraryPath() {
    return findLibrary();
}

ErrorOr<Imaging*> imaging() {
    static std::once_flag once;
    static std::optional<ErrorOr<Imaging*>> loaded;
    std::call_once(once, [] { loaded.emplace(load()); });
    return *loaded;
}

} // namespace px::media
