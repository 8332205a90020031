#include "config/Coercions.h"

#include "config/UtcDateText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <limits>

namespace px::expand {

namespace {

std::string_view skipBlanks(std::string_view text) {
    auto start = text.find_first_not_of(" \t");
    return start == std::string_view::npos ? std::string_view{} : text.substr(start);
}

// What a UTF-8 lead byte announces: the sequence length (0 for no valid lead) and its bits.
struct Lead {
    int length;
    std::uint32_t bits;
};

Lead readLead(unsigned char lead) {
    if ((lead & 0xE0) == 0xC0) return {2, lead & 0x1Fu};
    if ((lead & 0xF0) == 0xE0) return {3, lead & 0x0Fu};
    if ((lead & 0xF8) == 0xF0) return {4, lead & 0x07u};
    return {0, 0};
}

// Checks one multi-byte sequence at `at`; answers its length, or 0 when it is malformed,
// overlong, a surrogate or beyond U+10FFFF.
std::size_t validSequenceAt(std::string_view text, std::size_t at) {
    constexpr std::array<std::uint32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    auto [length, codePoint] = readLead(static_cast<unsigned char>(text[at]));
    if (length == 0 || at + length > text.size()) return 0;
    for (int i = 1; i < length; ++i) {
        auto byte = static_cast<unsigned char>(text[at + i]);
        if ((byte & 0xC0) != 0x80) return 0;
        codePoint = (codePoint << 6) | (byte & 0x3F);
    }
    bool surrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < smallest[length] || codePoint > 0x10FFFF || surrogate) return 0;
    return static_cast<std::size_t>(length);
}

bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        if (static_cast<unsigned char>(text[at]) < 0x80) {
            ++at;
            continue;
        }
        std::size_t length = validSequenceAt(text, at);
        if (length == 0) return false;
        at += length;
    }
    return true;
}

// Bytes that are not UTF-8 are read one character per byte, so nothing is lost: ASCII stays
// as it is and every byte from 0x80 becomes the character of the same number (U+0080-U+00FF).
std::string bytesAsCharacters(const plist::Bytes& bytes) {
    std::string text;
    text.reserve(bytes.size() * 2);
    for (auto byte : bytes) {
        if (byte < 0x80) {
            text += static_cast<char>(byte);
            continue;
        }
        text += static_cast<char>(0xC0 | (byte >> 6));
        text += static_cast<char>(0x80 | (byte & 0x3F));
    }
    return text;
}

std::string decodeData(const plist::Bytes& bytes) {
    std::string_view raw(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return isUtf8(raw) ? std::string(raw) : bytesAsCharacters(bytes);
}

} // namespace

std::int64_t leadingInteger(std::string_view text) {
    constexpr std::uint64_t limit = std::uint64_t{1} << 63;
    text = skipBlanks(text);
    bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
    std::uint64_t magnitude = 0;
    for (char c : text) {
        if (c < '0' || c > '9') break;
        auto digit = static_cast<std::uint64_t>(c - '0');
        magnitude = magnitude > limit / 10 ? limit : std::min(limit, magnitude * 10 + digit);
    }
    if (negative)
        return magnitude == limit ? std::numeric_limits<std::int64_t>::min()
                                  : -static_cast<std::int64_t>(magnitude);
    return static_cast<std::int64_t>(std::min(limit - 1, magnitude));
}

double leadingReal(std::string_view text) {
    text = skipBlanks(text);
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
    double number = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} ? number : 0.0;
}

Value asNSNumber(const Value& value) {
    if (!value) return {};
    if (value.isNumber()) return value;
    if (value.isString()) return Value(leadingInteger(value.string()));
    if (value.isDate()) return Value(value.dateSeconds());
    if (value.isNull()) return Value(0);
    return {};
}

std::int64_t asInteger(const Value& value) {
    Value number = asNSNumber(value);
    return number ? number.integer() : 0;
}

float asFloat(const Value& value) {
    Value number = asNSNumber(value);
    return number ? static_cast<float>(number.real()) : 0.0f;
}

bool asBool(const Value& value) {
    Value number = asNSNumber(value);
    return number && number.boolean();
}

std::optional<std::string> asNSString(const Value& value) {
    if (!value || value.isNull()) return std::nullopt;
    if (value.isString()) return value.string();
    if (value.isData()) return decodeData(value.data());
    return value.description();
}

Value asNSDate(const Value& value) {
    // Tried in this order; the first that reads the whole text wins.
    static constexpr std::array<std::string_view, 3> patterns{"yyyy-MM-dd HH:mm:ss",
                                                              "yyyy/MM/dd HH:mm:ss", "yyyy-MM-dd"};
    if (!value || value.isDate()) return value;
    if (value.isString()) {
        for (auto pattern : patterns)
            if (auto seconds = parseUtcDate(value.string(), pattern))
                return Value::makeDate(*seconds);
        return {};
    }
    Value number = asNSNumber(value);
    return Value::makeDate(number ? number.real() : 0.0);
}

Value asNSData(const Value& value) {
    if (value.isData()) return value;
    if (!value.isString()) return {};
    const std::string& text = value.string();
    return Value::makeData(plist::Bytes(text.begin(), text.end()));
}

Value asNSArray(const Value& value) {
    if (!value || value.isArray()) return value;
    return Value::makeArray({value});
}

Value asNSMutableArray(const Value& value) {
    return value.isArray() && value.isMutable() ? value : Value{};
}

Value asNSDictionary(const Value& value) {
    return value.isDictionary() ? value : Value{};
}

Value asNSMutableDictionary(const Value& value) {
    if (!value.isDictionary()) return {};
    return value.isMutable() ? value : value.mutableCopy();
}

} // namespace px::expand
