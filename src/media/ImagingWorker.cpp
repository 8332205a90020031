// pxmenu-imaging-worker: converts one file, as "Convert to" asks, in a process of its own, so
// that a document or image that makes the decoders run away costs only this process, which its
// parent bounds in memory and time and kills when it stalls (media/BoundedConversion.h).
// Usage: pxmenu-imaging-worker PATH KEY ICON-TYPE
// Writes "progress <count> <index>" lines as pages are done, then "outcome <result> <w> <h>".
#include "media/ImageConversion.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s PATH KEY ICON-TYPE\n", argv[0]);
        return 2;
    }
    using px::media::ConvertOutcome;
    ConvertOutcome outcome{ConvertOutcome::Result::Failed};
    try {
        outcome = px::media::convertImageFile(
            argv[1], argv[2], std::atoi(argv[3]), [](std::int64_t count, std::int64_t index) {
                std::printf("progress %lld %lld\n", static_cast<long long>(count),
                            static_cast<long long>(index));
                std::fflush(stdout);
            });
    } catch (const std::exception&) {
    }
    std::printf("outcome %d %d %d\n", static_cast<int>(outcome.result), outcome.width,
                outcome.height);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
