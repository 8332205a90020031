#include "plist/UtcDateText.h"

#include <chrono>
#include <cstddef>

namespace px::expand {

namespace {

struct Fields {
    int year = 1970;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

int* fieldFor(Fields& fields, char letter) {
    switch (letter) {
    case 'y':
        return &fields.year;
    case 'M':
        return &fields.month;
    case 'd':
        return &fields.day;
    case 'H':
        return &fields.hour;
    case 'm':
        return &fields.minute;
    case 's':
        return &fields.second;
    default:
        return nullptr;
    }
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Reads `count` digits at `at`; nothing when one of them is not a digit.
std::optional<int> digitsAt(std::string_view text, std::size_t at, std::size_t count) {
    int number = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        if (!isDigit(text[i])) return std::nullopt;
        number = number * 10 + (text[i] - '0');
    }
    return number;
}

std::optional<Fields> matchPattern(std::string_view text, std::string_view pattern) {
    if (text.size() != pattern.size()) return std::nullopt;
    Fields fields;
    for (std::size_t i = 0; i < pattern.size();) {
        char letter = pattern[i];
        if (!isLetter(letter)) {
            if (text[i++] != letter) return std::nullopt;
            continue;
        }
        std::size_t end = pattern.find_first_not_of(letter, i);
        std::size_t count = (end == std::string_view::npos ? pattern.size() : end) - i;
        auto number = digitsAt(text, i, count);
        int* field = fieldFor(fields, letter);
        if (!number || !field) return std::nullopt;
        *field = *number;
        i += count;
    }
    return fields;
}

std::optional<double> secondsSince1970(const Fields& fields) {
    using namespace std::chrono;
    year_month_day date{year{fields.year}, month{static_cast<unsigned>(fields.month)},
                        day{static_cast<unsigned>(fields.day)}};
    if (!date.ok() || fields.hour > 23 || fields.minute > 59 || fields.second > 59)
        return std::nullopt;
    auto dayCount = sys_days{date}.time_since_epoch().count();
    return static_cast<double>(dayCount) * 86400.0 + fields.hour * 3600 + fields.minute * 60 +
           fields.second;
}

} // namespace

std::optional<double> parseUtcDate(std::string_view text, std::string_view pattern) {
    auto fields = matchPattern(text, pattern);
    if (!fields) return std::nullopt;
    return secondsSince1970(*fields);
}

} // namespace px::expand
