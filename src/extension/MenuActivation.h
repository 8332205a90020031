#pragma once

#include "extension/MenuService.h"
#include "support/ErrorOr.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace px {

// What a plugin starts when an entry is chosen: `pxmenu run --ui gui` with the request, the
// entry's tag and its key path. The program path comes from the build; $PXMENU_PROGRAM
// overrides it (tests point it at a recorder).
std::string pxmenuProgram();

// The argument vector for choosing `tag`. When the selection would make the vector larger than
// `argumentBudget` bytes, the paths go to `pathsFile` (one per NUL-terminated record) and the
// vector names it with --paths-from; the caller writes that file.
struct ActivationCommand {
    std::vector<std::string> argv;
    bool pathsInFile = false;
};
ActivationCommand activationCommand(const MenuRequest& request, std::int64_t tag,
                                    const std::vector<std::string>& keyPath,
                                    const std::string& pathsFile, std::size_t argumentBudget);

// Starts the command for the chosen entry detached (its own session, no descriptors of the
// file manager, never waited for) and returns at once.
ErrorOr<void> activate(const MenuRequest& request, std::int64_t tag,
                       const std::vector<std::string>& keyPath);

// Starts `pxmenu setup` detached, at most once per process.
void requestSetup();

} // namespace px
