#include "Frame.h"

#include <fmt/format.h>

namespace px::handoff {

namespace {

void appendLength(std::string& out, std::size_t length) {
    for (int shift = 0; shift < 32; shift += 8)
        out.push_back(static_cast<char>((length >> shift) & 0xff));
}

std::size_t readLength(std::string_view bytes) {
    std::size_t length = 0;
    for (int index = 3; index >= 0; --index)
        length = (length << 8) | static_cast<unsigned char>(bytes[static_cast<std::size_t>(index)]);
    return length;
}

} // namespace

std::string encodeFrame(const Fields& fields) {
    std::string payload;
    for (const auto& field : fields) {
        payload.push_back(static_cast<char>(field.tag));
        appendLength(payload, field.bytes.size());
        payload += field.bytes;
    }
    std::string frame(kFrameMark);
    appendLength(frame, payload.size());
    return frame + payload;
}

ErrorOr<Fields> decodeFields(std::string_view payload) {
    Fields fields;
    while (!payload.empty()) {
        if (payload.size() < 5) return Error{"a frame field is cut short", EPROTO};
        const std::size_t length = readLength(payload.substr(1, 4));
        if (length > payload.size() - 5)
            return Error{fmt::format("a frame field claims {} bytes but {} remain", length,
                                     payload.size() - 5),
                         EPROTO};
        fields.push_back(
            {static_cast<std::uint8_t>(payload[0]), std::string(payload.substr(5, length))});
        payload.remove_prefix(5 + length);
    }
    return fields;
}

void FrameReader::feed(std::string_view bytes) {
    if (!m_failure) m_buffer.append(bytes);
}

ErrorOr<std::optional<Fields>> FrameReader::next() {
    if (m_failure) return *m_failure;
    const std::size_t markBytes = std::min(m_buffer.size(), kFrameMark.size());
    if (m_buffer.compare(0, markBytes, kFrameMark.substr(0, markBytes)) != 0)
        m_failure = Error{"the bytes received are not a pxmenu request frame", EPROTO};
    else if (m_buffer.size() < kHeaderBytes)
        return std::optional<Fields>();
    else if (const auto length = readLength(std::string_view(m_buffer).substr(4, 4));
             length > kMaxPayloadBytes)
        m_failure = Error{fmt::format("a frame of {} bytes is larger than the {} allowed", length,
                                      kMaxPayloadBytes),
                          EMSGSIZE};
    else if (m_buffer.size() < kHeaderBytes + length)
        return std::optional<Fields>();
    else {
        auto fields = decodeFields(std::string_view(m_buffer).substr(kHeaderBytes, length));
        m_buffer.erase(0, kHeaderBytes + length);
        if (!fields.isError()) return std::optional<Fields>(fields.releaseValue());
        m_failure = fields.error();
    }
    m_buffer.clear();
    return *m_failure;
}

} // namespace px::handoff
