#pragma once

#include "support/ErrorOr.h"

#include <optional>
#include <string>

namespace px::media {

// Where a module is looked for and what it is called in messages.
struct ModuleSpec {
    const char* fileName;   // "pxmenu-imaging.so"
    const char* entryPoint; // the exported function handing out its implementation
    const char* what;       // "image library"
    // Whether the usual places are still searched when PXMENU_LIBDIR is set and lacks it.
    bool usualPlacesAfterOverride = false;
};

// Loads a module of the program's own: from PXMENU_LIBDIR when set, else the module folder under
// the installed program's own prefix, the build tree's lib/, or the configured location; and answers
// what its entry point returns. The module stays loaded. Symbols are bound lazily, as for a
// program's own libraries: binding all of a large module's libraries' symbols up front costs
// more than the small jobs they do.
ErrorOr<void*> loadModule(const ModuleSpec& spec);

// Where loadModule finds the module, or nothing when it is in none of the places.
std::optional<std::string> findModule(const ModuleSpec& spec);

} // namespace px::media
