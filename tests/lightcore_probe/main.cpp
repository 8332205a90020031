// A program that links the light core alone, as a file-manager plugin does, and builds a menu
// for one file from the factory configuration. It prints the number of top-level entries.
#include "config/PXDefaultData.h"
#include "extension/MenuBuilder.h"
#include "platform/MemorySettings.h"

#include <cstdio>
#include <cstdlib>
#include <string>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s DATA-FOLDER FILE\n", argv[0]);
        return 2;
    }
    auto store = std::make_shared<px::PXMenuManager>(
        std::make_shared<px::platform::MemorySettings>(), argv[1]);
    px::PXDefaultData(*store).setup();
    px::Request request({{argv[2]}, "/", px::MenuKind::ContextualItems, {}, {}, store});
    px::BuiltMenu menu = px::buildMenu(request);
    std::printf("%zu\n", menu.entries.size());
    return menu.entries.empty() ? 1 : 0;
}
