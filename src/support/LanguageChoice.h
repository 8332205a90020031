#pragma once

#include <string>
#include <vector>

namespace px {

// The locale variables that choose the language of the product's texts.
struct LocaleEnvironment {
    std::string language;   // LANGUAGE: a colon-separated list of preferences
    std::string lcAll;      // LC_ALL
    std::string lcMessages; // LC_MESSAGES
    std::string lang;       // LANG

    static LocaleEnvironment fromProcess();
};

// The catalogue names to try, most preferred first, always ending with "en".
//
// The rules are gettext's: the locale is the first non-empty one of LC_ALL, LC_MESSAGES and
// LANG; when it is unset, "C" or "POSIX" (with any codeset) the texts are English and LANGUAGE
// is not consulted; otherwise LANGUAGE, when set, replaces the locale by its list. Each name
// gives its variants from the most to the least specific: "zh_CN.UTF-8" gives "zh_CN" then
// "zh"; a "C" entry of LANGUAGE ends the list (English). "sr_RS@latin" gives "sr_RS@latin",
// "sr@latin", "sr_RS", "sr".
std::vector<std::string> catalogueLanguages(const LocaleEnvironment& environment);

} // namespace px
