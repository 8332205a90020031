#pragma once

#include <string>
#include <utility>
#include <variant>

namespace px {

// A failure that crosses a module boundary: a message for people and an errno-like code.
struct Error {
    std::string message;
    int code = 0;

    static Error fromErrno(std::string what, int err);
};

template <typename T> class [[nodiscard]] ErrorOr {
  public:
    ErrorOr(T value) : m_value(std::move(value)) {}
    ErrorOr(Error error) : m_value(std::move(error)) {}

    bool isError() const { return std::holds_alternative<Error>(m_value); }
    explicit operator bool() const { return !isError(); }

    T& value() { return std::get<T>(m_value); }
    const T& value() const { return std::get<T>(m_value); }
    const Error& error() const { return std::get<Error>(m_value); }

    T releaseValue() { return std::move(std::get<T>(m_value)); }
    Error releaseError() { return std::move(std::get<Error>(m_value)); }

  private:
    std::variant<T, Error> m_value;
};

template <> class [[nodiscard]] ErrorOr<void> {
  public:
    ErrorOr() = default;
    ErrorOr(Error error) : m_error(std::move(error)), m_failed(true) {}

    bool isError() const { return m_failed; }
    explicit operator bool() const { return !m_failed; }
    const Error& error() const { return m_error; }
    Error releaseError() { return std::move(m_error); }
    void releaseValue() {}

  private:
    Error m_error;
    bool m_failed = false;
};

} // namespace px

// Evaluates an ErrorOr expression; returns its error from the enclosing function, else yields
// its value.
#define TRY(expression)                                                                            \
    ({                                                                                             \
        auto _px_try_result = (expression);                                                        \
        if (_px_try_result.isError()) return _px_try_result.releaseError();                        \
        _px_try_result.releaseValue();                                                             \
    })
