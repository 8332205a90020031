#pragma once

#include <optional>
#include <string_view>

namespace px::expand {

// Reads a calendar date and time in UTC by a pattern such as "yyyy-MM-dd HH:mm:ss": each run of
// one letter (y year, M month, d day, H hour, m minute, s second) takes exactly that many
// digits, any other character must appear as it is, and the whole text must match. Fields the
// pattern leaves out are the start of their range. Impossible dates (February 30th, hour 24)
// give nothing. The result is seconds since 1970-01-01 00:00:00 UTC.
std::optional<double> parseUtcDate(std::string_view text, std::string_view pattern);

} // namespace px::expand
