#include "plist/Value.h"

#include <cassert>
#include <chrono>
#include <cmath>
#include <fmt/format.h>
#include <limits>
#include <variant>

namespace px::plist {

struct Value::Node {
    Type type;
    bool isMutable = false;
    std::variant<std::monostate, bool, std::int64_t, double, std::string, Bytes, Array, Dictionary>
        payload;
};

namespace {

template <typename Payload>
std::shared_ptr<Value::Node> makeNode(Type type, Payload payload, bool isMutable = false) {
    auto node = std::make_shared<Value::Node>();
    node->type = type;
    node->isMutable = isMutable;
    node->payload = std::move(payload);
    return node;
}

// Reals convert toward zero; values beyond the 64-bit range saturate and NaN reads as 0, where a
// plain cast would be undefined.
std::int64_t saturatingInteger(double real) {
    constexpr double limit = 9223372036854775808.0; // 2^63
    if (std::isnan(real)) return 0;
    if (real >= limit) return std::numeric_limits<std::int64_t>::max();
    if (real < -limit) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(real);
}

} // namespace

Value::Value(bool boolean) : m_node(makeNode(Type::Boolean, boolean)) {}
Value::Value(Type type, std::int64_t integer) : m_node(makeNode(type, integer)) {}
Value::Value(double real) : m_node(makeNode(Type::Real, real)) {}
Value::Value(std::string string) : m_node(makeNode(Type::String, std::move(string))) {}

Value Value::null() {
    return Value(makeNode(Type::Null, std::monostate{}));
}
Value Value::makeDate(double secondsSince1970) {
    return Value(makeNode(Type::Date, secondsSince1970));
}
Value Value::makeData(Bytes bytes) {
    return Value(makeNode(Type::Data, std::move(bytes)));
}
Value Value::makeArray(Array items) {
    return Value(makeNode(Type::Array, std::move(items)));
}
Value Value::makeMutableArray(Array items) {
    return Value(makeNode(Type::Array, std::move(items), true));
}
Value Value::makeDictionary(Dictionary entries) {
    return Value(makeNode(Type::Dictionary, std::move(entries)));
}
Value Value::makeMutableDictionary(Dictionary entries) {
    return Value(makeNode(Type::Dictionary, std::move(entries), true));
}

Type Value::type() const {
    assert(m_node);
    return m_node->type;
}

bool Value::isNumber() const {
    return is(Type::Boolean) || is(Type::Integer) || is(Type::Real);
}

bool Value::isMutable() const {
    return m_node && m_node->isMutable;
}

bool Value::boolean() const {
    return integer() != 0 || (is(Type::Real) && real() != 0.0);
}

std::int64_t Value::integer() const {
    switch (type()) {
    case Type::Boolean:
        return std::get<bool>(m_node->payload) ? 1 : 0;
    case Type::Integer:
        return std::get<std::int64_t>(m_node->payload);
    default:
        return saturatingInteger(real());
    }
}

double Value::real() const {
    switch (type()) {
    case Type::Boolean:
    case Type::Integer:
        return static_cast<double>(integer());
    default:
        return std::get<double>(m_node->payload);
    }
}

const std::string& Value::string() const& {
    return std::get<std::string>(m_node->payload);
}
double Value::dateSeconds() const {
    return std::get<double>(m_node->payload);
}
const Bytes& Value::data() const& {
    return std::get<Bytes>(m_node->payload);
}
const Array& Value::array() const& {
    return std::get<Array>(m_node->payload);
}
const Dictionary& Value::dictionary() const& {
    return std::get<Dictionary>(m_node->payload);
}

Array& Value::mutableArray() const {
    assert(isMutable());
    return std::get<Array>(m_node->payload);
}

Dictionary& Value::mutableDictionary() const {
    assert(isMutable());
    return std::get<Dictionary>(m_node->payload);
}

Value Value::get(std::string_view key) const {
    if (!isDictionary()) return {};
    const auto& entries = dictionary();
    auto it = entries.find(key);
    return it == entries.end() ? Value{} : it->second;
}

bool Value::set(std::string key, Value value) const {
    if (!isDictionary() || !isMutable()) return false;
    mutableDictionary().insert_or_assign(std::move(key), std::move(value));
    return true;
}

bool Value::remove(std::string_view key) const {
    if (!isDictionary() || !isMutable()) return false;
    auto& entries = mutableDictionary();
    auto it = entries.find(key);
    if (it == entries.end()) return false;
    entries.erase(it);
    return true;
}

Value Value::copy() const {
    if (!isMutable()) return *this;
    if (isArray()) return makeArray(array());
    return makeDictionary(dictionary());
}

Value Value::mutableCopy() const {
    if (isArray()) return makeMutableArray(array());
    if (isDictionary()) return makeMutableDictionary(dictionary());
    return *this;
}

Value Value::frozen() const {
    if (isArray()) {
        Array items;
        items.reserve(array().size());
        for (const auto& item : array())
            items.push_back(item.frozen());
        return makeArray(std::move(items));
    }
    if (isDictionary()) {
        Dictionary entries;
        for (const auto& [key, item] : dictionary())
            entries.emplace(key, item.frozen());
        return makeDictionary(std::move(entries));
    }
    return *this;
}

bool Value::operator==(const Value& other) const {
    if (m_node == other.m_node) return true;
    if (!m_node || !other.m_node) return false;
    if (isNumber() && other.isNumber()) {
        // Integers compare exactly: through double, 2^53 + 1 would equal 2^53.
        if (is(Type::Real) || other.is(Type::Real)) return real() == other.real();
        return integer() == other.integer();
    }
    if (type() != other.type()) return false;
    return m_node->payload == other.m_node->payload;
}

namespace {

std::string describeReal(double real) {
    if (std::isfinite(real) && real == std::trunc(real) && std::fabs(real) < 1e15)
        return fmt::format("{}", static_cast<long long>(real));
    return fmt::format("{}", real);
}

std::string describeData(const Bytes& bytes) {
    std::string text = "{length = " + std::to_string(bytes.size()) + ", bytes = 0x";
    for (auto byte : bytes)
        text += fmt::format("{:02x}", byte);
    return text + "}";
}

// A date as the platform writes one: "2024-02-03 04:05:06 +0000", in UTC.
std::string describeDate(double secondsSince1970) {
    using namespace std::chrono;
    if (!std::isfinite(secondsSince1970) || std::fabs(secondsSince1970) > 1e14)
        return fmt::format("{} seconds since 1970", describeReal(secondsSince1970));
    sys_seconds instant{seconds{static_cast<std::int64_t>(std::floor(secondsSince1970))}};
    auto day = floor<days>(instant);
    year_month_day date{day};
    hh_mm_ss time{instant - day};
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02}:{:02} +0000", int(date.year()),
                       unsigned(date.month()), unsigned(date.day()), time.hours().count(),
                       time.minutes().count(), time.seconds().count());
}

} // namespace

std::string Value::description() const {
    if (!m_node) return "(null)";
    switch (type()) {
    case Type::Null:
        return "<null>";
    case Type::Boolean:
    case Type::Integer:
        return std::to_string(integer());
    case Type::Real:
        return describeReal(real());
    case Type::String:
        return string();
    case Type::Date:
        return describeDate(dateSeconds());
    case Type::Data:
        return describeData(data());
    case Type::Array: {
        std::string text = "(";
        for (size_t i = 0; i < array().size(); ++i)
            text += (i ? ", " : "") + array()[i].description();
        return text + ")";
    }
    case Type::Dictionary: {
        std::string text = "{";
        for (const auto& [key, value] : dictionary())
            text += key + " = " + value.description() + "; ";
        return text + "}";
    }
    }
    return {};
}

} // namespace px::plist
