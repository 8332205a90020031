// Feeds arbitrary bytes, split at a point the input chooses, to the hand-off frame reader and
// the request and reply decoders: none may crash, hang or read outside the bytes.
#include "Frame.h"
#include "Messages.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::size_t split = data[0] % size;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    px::handoff::FrameReader reader;
    reader.feed(bytes.substr(0, split));
    for (int part = 0; part < 2; ++part) {
        for (;;) {
            auto frame = reader.next();
            if (frame.isError() || !frame.value()) break;
            (void)px::handoff::decodeRequest(*frame.value());
            (void)px::handoff::decodeReply(*frame.value());
        }
        reader.feed(bytes.substr(std::min(split, bytes.size())));
    }
    return 0;
}
