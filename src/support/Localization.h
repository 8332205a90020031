#pragma once

#include <array>
#include <fmt/format.h>
#include <span>
#include <string>
#include <string_view>

namespace px {

// The product's text for `key` in the user's language (gettext domain "pxmenu", the key is the
// msgid). A key without a translation comes back unchanged, so it doubles as the English text;
// the English catalogue turns identifier-like keys ("Delete Tip") into sentences and applies
// under the C locale too. Safe to call from any thread.
std::string localized(std::string_view key);

// Fills the placeholders of a localised text with `arguments`, in order: "%@", "%d", "%i",
// "%u", "%s" (with an optional "l", "ll", "z" or "q" length) take the next argument, "%2$@"
// takes the second, "%%" is a percent sign. Anything else, and a placeholder without an
// argument, is kept as written, so a faulty translation can never fail or read past the list.
std::string formatLocalizedText(std::string_view text, std::span<const std::string> arguments);

// localized(key) with its placeholders filled by the arguments, each written as fmt writes it.
template <typename... Arguments>
std::string localizedFormat(std::string_view key, const Arguments&... arguments) {
    const std::array<std::string, sizeof...(Arguments)> texts{fmt::to_string(arguments)...};
    return formatLocalizedText(localized(key), texts);
}

// Forgets every loaded catalogue, so that a test can replace catalogue files and see the effect.
// (The locale variables and PXMENU_LOCALEDIR are read on every call.)
void resetLocalizationForTesting();

} // namespace px
