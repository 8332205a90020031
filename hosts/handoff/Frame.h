#pragma once

#include "support/ErrorOr.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The frames `pxmenu run --ui gui` and pxmenu-extension exchange over the session socket: a
// four-byte mark "PXF1", the payload's length (four bytes, little-endian) and the payload, a
// list of fields, each a one-byte tag, a four-byte little-endian length and that many bytes.
// Bytes are carried as they are, so names that are not UTF-8 survive.
namespace px::handoff {

inline constexpr std::string_view kFrameMark = "PXF1";
inline constexpr std::size_t kHeaderBytes = 8;
// Larger frames are refused before their payload is read.
inline constexpr std::size_t kMaxPayloadBytes = std::size_t{1} << 20;

struct Field {
    std::uint8_t tag = 0;
    std::string bytes;
    bool operator==(const Field&) const = default;
};
using Fields = std::vector<Field>;

std::string encodeFrame(const Fields& fields);

// Reads frames from bytes as they arrive. A frame with a wrong mark, an oversized length or
// fields that overrun the payload is an error; after an error the reader stays failed (the
// connection cannot be resynchronised).
class FrameReader {
  public:
    void feed(std::string_view bytes);
    // The next whole frame; none while more bytes are needed.
    ErrorOr<std::optional<Fields>> next();
    // Bytes received that do not yet make a whole frame (a frame cut short when the peer
    // closes).
    bool hasPartialFrame() const { return !m_buffer.empty(); }

  private:
    std::string m_buffer;
    std::optional<Error> m_failure;
};

// The fields of a payload; an error when a field overruns it.
ErrorOr<Fields> decodeFields(std::string_view payload);

} // namespace px::handoff
