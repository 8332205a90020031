#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace px::plist {

enum class Type : std::uint8_t {
    Null,
    Boolean,
    Integer,
    Real,
    String,
    Date,
    Data,
    Array,
    Dictionary
};

class Value;
using Array = std::vector<Value>;
using Dictionary = std::map<std::string, Value, std::less<>>;
using Bytes = std::vector<std::uint8_t>;

// A property-list value with the reference semantics of the objects it models: copies of a
// Value share one object. Arrays and dictionaries are immutable or mutable; only mutable ones
// change in place, and every holder sees the change. A default-constructed Value is "nothing"
// (absent), which is distinct from the null value.
class Value {
  public:
    Value() = default;
    Value(bool boolean);
    template <typename T>
    requires(std::is_integral_v<T> && !std::is_same_v<T, bool>) Value(T integer)
        : Value(Type::Integer, static_cast<std::int64_t>(integer)) {}
    Value(double real);
    Value(std::string string);
    Value(std::string_view string) : Value(std::string(string)) {}
    Value(const char* string) : Value(std::string(string)) {}

    static Value null();
    static Value makeDate(double secondsSince1970);
    static Value makeData(Bytes bytes);
    static Value makeArray(Array items = {});
    static Value makeMutableArray(Array items = {});
    static Value makeDictionary(Dictionary entries = {});
    static Value makeMutableDictionary(Dictionary entries = {});

    bool isAbsent() const { return m_node == nullptr; }
    explicit operator bool() const { return m_node != nullptr; }
    Type type() const;
    bool is(Type type) const { return m_node && this->type() == type; }
    bool isNull() const { return is(Type::Null); }
    bool isNumber() const;
    bool isString() const { return is(Type::String); }
    bool isDate() const { return is(Type::Date); }
    bool isData() const { return is(Type::Data); }
    bool isArray() const { return is(Type::Array); }
    bool isDictionary() const { return is(Type::Dictionary); }
    bool isMutable() const;

    // Raw readers; each requires the matching type (numbers read across their three types).
    bool boolean() const;
    std::int64_t integer() const;
    double real() const;
    const std::string& string() const&;
    std::string string() const&& { return static_cast<const Value&>(*this).string(); }
    double dateSeconds() const;
    const Bytes& data() const&;
    Bytes data() const&& { return static_cast<const Value&>(*this).data(); }
    const Array& array() const&;
    // On a temporary the contents are copied out, so `for (x : f().array())` stays valid.
    Array array() const&& { return static_cast<const Value&>(*this).array(); }
    const Dictionary& dictionary() const&;
    Dictionary dictionary() const&& { return static_cast<const Value&>(*this).dictionary(); }
    Array& mutableArray() const;
    Dictionary& mutableDictionary() const;

    // The value under a key of a dictionary; nothing for other values or a missing key.
    Value get(std::string_view key) const;
    // Stores into a mutable dictionary; returns false for anything else.
    bool set(std::string key, Value value) const;
    // Removes a key from a mutable dictionary; returns true when the key was there.
    bool remove(std::string_view key) const;

    Value copy() const;
    Value mutableCopy() const;
    // A deep copy in which every container is immutable, as a settings store keeps values.
    Value frozen() const;

    bool sameObject(const Value& other) const { return m_node == other.m_node; }
    bool operator==(const Value& other) const;
    std::string description() const;

    struct Node;

  private:
    Value(Type type, std::int64_t integer);
    explicit Value(std::shared_ptr<Node> node) : m_node(std::move(node)) {}

    std::shared_ptr<Node> m_node;
};

} // namespace px::plist
