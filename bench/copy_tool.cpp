// Copies one item the way "Copy to" does (written under a temporary name beside the target,
// renamed into place when complete), for timing side by side with cp: copy_tool SOURCE TARGET
#include "actions/ItemTransfer.h"

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s SOURCE TARGET\n", argv[0]);
        return 2;
    }
    auto copied = px::transfer::copyItem(argv[1], argv[2], px::transfer::Existing::Keep);
    if (copied.isError()) {
        std::fprintf(stderr, "%s\n", copied.error().message.c_str());
        return 1;
    }
    return 0;
}
