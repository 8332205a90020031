#include "plist/PlistCodec.h"

#include "plist/PlistBinaryKeys.h"
#include "plist/PlistDepth.h"
#include "support/FileIO.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <optional>
#include <plist/plist.h>

namespace px::plist {

namespace {

// Seconds between 1970-01-01 and 2001-01-01, the epoch of property-list dates.
constexpr double kReferenceDateOffset = 978307200.0;

struct PlistDeleter {
    void operator()(plist_t node) const { plist_free(node); }
};
using PlistHandle = std::unique_ptr<void, PlistDeleter>;

struct MallocDeleter {
    void operator()(char* text) const { std::free(text); }
};
using MallocText = std::unique_ptr<char, MallocDeleter>;

// Nesting deeper than this is refused, when reading and when writing, rather than risking the
// stack on hostile files or writing a file that could not be read back.
constexpr int kMaxDepth = 512;

// `tooDeep` is set when nesting past kMaxDepth was cut off.
Value fromNode(plist_t node, int depth, bool& tooDeep);

Value arrayFromNode(plist_t node, int depth, bool& tooDeep) {
    Array items;
    uint32_t count = plist_array_get_size(node);
    items.reserve(count);
    for (uint32_t i = 0; i < count; ++i) {
        Value item = fromNode(plist_array_get_item(node, i), depth + 1, tooDeep);
        if (item) items.push_back(std::move(item));
    }
    return Value::makeArray(std::move(items));
}

Value dictionaryFromNode(plist_t node, int depth, bool& tooDeep) {
    Dictionary entries;
    plist_dict_iter iter = nullptr;
    plist_dict_new_iter(node, &iter);
    for (;;) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iter, &key, &item);
        if (!key) break;
        MallocText owned(key);
        if (Value value = fromNode(item, depth + 1, tooDeep))
            entries.insert_or_assign(key, std::move(value));
    }
    std::free(iter);
    return Value::makeDictionary(std::move(entries));
}

// Read in place: plist_get_string_val aborts the process on an XML string holding a raw zero
// byte. Such text ends at the zero byte, as every string written through libplist does.
Value stringFromNode(plist_t node) {
    uint64_t length = 0;
    const char* text = plist_get_string_ptr(node, &length);
    if (!text) return Value(std::string());
    return Value(std::string(text, ::strnlen(text, static_cast<std::size_t>(length))));
}

Value dataFromNode(plist_t node) {
    char* bytes = nullptr;
    uint64_t length = 0;
    plist_get_data_val(node, &bytes, &length);
    MallocText owned(bytes);
    auto* begin = reinterpret_cast<const std::uint8_t*>(bytes);
    return Value::makeData(bytes ? Bytes(begin, begin + length) : Bytes{});
}

// A date's exact seconds since 2001, read from the node's own binary form: object 0 at offset 8,
// a date marker then a big-endian double.
std::optional<double> exactSecondsSince2001(plist_t node) {
    char* bytes = nullptr;
    uint32_t length = 0;
    plist_to_bin(node, &bytes, &length);
    MallocText owned(bytes);
    constexpr uint32_t kObject = 8;
    if (!bytes || length < kObject + 9 || static_cast<uint8_t>(bytes[kObject]) != 0x33)
        return std::nullopt;
    uint64_t bits = 0;
    for (uint32_t i = kObject + 1; i < kObject + 9; ++i)
        bits = (bits << 8) | static_cast<uint8_t>(bytes[i]);
    return std::bit_cast<double>(bits);
}

// libplist's own reader cuts the seconds toward zero, drops the sign of the fraction and cuts
// it to whole microseconds, so a date before 2001 would come back up to a second late.
Value dateFromNode(plist_t node) {
    if (auto exact = exactSecondsSince2001(node))
        return Value::makeDate(kReferenceDateOffset + *exact);
    int32_t seconds = 0, micros = 0;
    plist_get_date_val(node, &seconds, &micros);
    double fraction = (seconds < 0 ? -micros : micros) / 1e6;
    return Value::makeDate(kReferenceDateOffset + seconds + fraction);
}

Value scalarFromNode(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        uint8_t flag = 0;
        plist_get_bool_val(node, &flag);
        return Value(flag != 0);
    }
    case PLIST_UINT: {
        uint64_t number = 0;
        plist_get_uint_val(node, &number);
        return Value(static_cast<std::int64_t>(number));
    }
    case PLIST_REAL: {
        double number = 0;
        plist_get_real_val(node, &number);
        return Value(number);
    }
    case PLIST_STRING:
        return stringFromNode(node);
    case PLIST_DATA:
        return dataFromNode(node);
    case PLIST_DATE:
        return dateFromNode(node);
    default:
        return {};
    }
}

Value fromNode(plist_t node, int depth, bool& tooDeep) {
    if (!node) return {};
    if (depth > kMaxDepth) {
        tooDeep = true;
        return {};
    }
    switch (plist_get_node_type(node)) {
    case PLIST_ARRAY:
        return arrayFromNode(node, depth, tooDeep);
    case PLIST_DICT:
        return dictionaryFromNode(node, depth, tooDeep);
    default:
        return scalarFromNode(node);
    }
}

// True when no value lies deeper than `levels` below this one.
bool valueNestsWithin(const Value& value, int levels) {
    if (levels < 0) return false;
    auto within = [levels](const Value& item) { return valueNestsWithin(item, levels - 1); };
    if (value.isArray()) return std::ranges::all_of(value.array(), within);
    if (value.isDictionary())
        return std::ranges::all_of(value.dictionary(),
                                   [&](const auto& entry) { return within(entry.second); });
    return true;
}

plist_t toNode(const Value& value, Format format);

plist_t arrayToNode(const Value& value, Format format) {
    plist_t node = plist_new_array();
    for (const auto& item : value.array())
        if (plist_t child = toNode(item, format)) plist_array_append_item(node, child);
    return node;
}

plist_t dictionaryToNode(const Value& value, Format format) {
    plist_t node = plist_new_dict();
    for (const auto& [key, item] : value.dictionary())
        if (plist_t child = toNode(item, format)) plist_dict_set_item(node, key.c_str(), child);
    return node;
}

// libplist keeps a date as seconds since 2001 that must fit 32 bits, so dates are clamped to
// 1933-2069. The XML form has whole seconds only, so there the fraction is dropped here: left to
// libplist, a date before 2001 would be cut toward 2001, a second late, instead of rounded down.
plist_t dateToNode(double secondsSince1970, Format format) {
    constexpr double lo = std::numeric_limits<int32_t>::min();
    constexpr double hi = std::numeric_limits<int32_t>::max();
    double since2001 = secondsSince1970 - kReferenceDateOffset;
    if (std::isnan(since2001)) since2001 = 0;
    since2001 = std::fmin(std::fmax(since2001, lo), hi);
    double whole = std::floor(since2001);
    auto micros = static_cast<int32_t>(std::lround((since2001 - whole) * 1e6));
    if (micros >= 1000000 && whole < hi) {
        // The fraction rounded up to a whole second.
        whole += 1;
        micros = 0;
    }
    if (format == Format::Xml) micros = 0;
    return plist_new_date(static_cast<int32_t>(whole), std::min(micros, 999999));
}

plist_t toNode(const Value& value, Format format) {
    if (!value) return nullptr;
    switch (value.type()) {
    case Type::Null:
        return nullptr;
    case Type::Boolean:
        return plist_new_bool(value.boolean());
    case Type::Integer:
        return plist_new_uint(static_cast<uint64_t>(value.integer()));
    case Type::Real:
        return plist_new_real(value.real());
    case Type::String:
        return plist_new_string(value.string().c_str());
    case Type::Date:
        return dateToNode(value.dateSeconds(), format);
    case Type::Data:
        return plist_new_data(reinterpret_cast<const char*>(value.data().data()),
                              value.data().size());
    case Type::Array:
        return arrayToNode(value, format);
    case Type::Dictionary:
        return dictionaryToNode(value, format);
    }
    return nullptr;
}

} // namespace

ErrorOr<Value> parse(std::string_view bytes) {
    if (bytes.empty()) return Error{"the property list is empty", EINVAL};
    if (bytes.size() > std::numeric_limits<uint32_t>::max())
        return Error{"the property list is too large", EFBIG};
    if (!nestsWithin(bytes, kMaxDepth))
        return Error{"the property list is nested too deeply", EINVAL};
    if (!binaryKeysAreReadable(bytes))
        return Error{"the property list has keys that cannot be read", EINVAL};
    plist_t root = nullptr;
    plist_from_memory(bytes.data(), static_cast<uint32_t>(bytes.size()), &root);
    PlistHandle owned(root);
    if (!root) return Error{"the property list cannot be parsed", EINVAL};
    bool tooDeep = false;
    Value value = fromNode(root, 0, tooDeep);
    if (tooDeep) return Error{"the property list is nested too deeply", EINVAL};
    if (!value) return Error{"the property list holds no value", EINVAL};
    return value;
}

ErrorOr<std::string> serialize(const Value& value, Format format) {
    if (!valueNestsWithin(value, kMaxDepth)) return Error{"the value is nested too deeply", EINVAL};
    PlistHandle root(toNode(value, format));
    if (!root) return Error{"nothing to write", EINVAL};
    char* text = nullptr;
    uint32_t length = 0;
    if (format == Format::Xml)
        plist_to_xml(root.get(), &text, &length);
    else
        plist_to_bin(root.get(), &text, &length);
    MallocText owned(text);
    if (!text) return Error{"the property list cannot be written", EINVAL};
    return std::string(text, length);
}

ErrorOr<Value> readFile(const std::string& path) {
    auto bytes = TRY(io::readWholeFile(path));
    return parse(bytes);
}

ErrorOr<void> writeFileAtomically(const std::string& path, const Value& value, Format format) {
    auto bytes = TRY(serialize(value, format));
    return io::replaceFileAtomically(path, bytes);
}

} // namespace px::plist
