#include "media/ModuleLoader.h"

#include "support/FileIO.h"
#include "support/InstalledFolder.h"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <optional>
#include <vector>

namespace px::media {
namespace {

std::vector<std::string> libraryFolders(const ModuleSpec& spec) {
    std::vector<std::string> folders;
    if (const char* custom = std::getenv("PXMENU_LIBDIR"); custom && *custom) {
        folders.push_back(custom);
        if (!spec.usualPlacesAfterOverride) return folders;
    }
    for (std::string folder :
         {installedFolder(PX_MODULE_INSTALL_DIR), std::string(PX_BUILD_LIBDIR),
          std::string(PX_INSTALL_LIBDIR)})
        folders.push_back(std::move(folder));
    return folders;
}

} // namespace

std::optional<std::string> findModule(const ModuleSpec& spec) {
    for (const std::string& folder : libraryFolders(spec)) {
        std::string candidate = folder + "/" + spec.fileName;
        if (io::exists(candidate)) return candidate;
    }
    return std::nullopt;
}

std::string lastLoaderError() {
    const char* message = ::dlerror();
    return message ? message : "unknown error";
}


// The handle is never closed: a module may keep threads that run its code (libvips does).
ErrorOr<void*> loadModule(const ModuleSpec& spec) {
    const std::optional<std::string> path = findModule(spec);
    if (!path)
        return Error{std::string("the ") + spec.what + " " + spec.fileName + " is not installed"};
    void* handle = ::dlopen(path->c_str(), RTLD_LAZY | RTLD_LOCAL);
    if (!handle)
        return Error{std::string("cannot load the ") + spec.what + ": " + lastLoaderError()};
    using Entry = void* (*)();
    auto entry = reinterpret_cast<Entry>(::dlsym(handle, spec.entryPoint));
    if (!entry) return Error{std::string("the ") + spec.what + " is damaged: " + lastLoaderError()};
    return entry();
}

} // namespace px::media
