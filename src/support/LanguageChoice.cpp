#include "support/LanguageChoice.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>
#include <unistd.h>

namespace px {

namespace {

// "ll_CC.codeset@modifier" without its codeset.
std::string withoutCodeset(std::string_view name) {
    const auto dot = name.find('.');
    if (dot == std::string_view::npos) return std::string(name);
    const auto at = name.find('@', dot);
    std::string result(name.substr(0, dot));
    if (at != std::string_view::npos) result += name.substr(at);
    return result;
}

bool isPortableLocale(std::string_view locale) {
    const std::string base = withoutCodeset(locale);
    return base.empty() || base == "C" || base == "POSIX";
}

void appendUnique(std::vector<std::string>& names, std::string name) {
    if (name.empty() || name.front() == '.' || name.find('/') != std::string::npos) return;
    if (std::find(names.begin(), names.end(), name) == names.end())
        names.push_back(std::move(name));
}

void appendVariants(std::vector<std::string>& names, std::string_view preference) {
    const std::string name = withoutCodeset(preference);
    const auto at = name.find('@');
    const std::string base = name.substr(0, at);
    const std::string modifier = at == std::string::npos ? "" : name.substr(at);
    const std::string language = base.substr(0, base.find('_'));
    if (!modifier.empty()) {
        appendUnique(names, base + modifier);
        appendUnique(names, language + modifier);
    }
    appendUnique(names, base);
    appendUnique(names, language);
}

std::string effectiveLocale(const LocaleEnvironment& environment) {
    for (const auto* value : {&environment.lcAll, &environment.lcMessages, &environment.lang})
        if (!value->empty()) return *value;
    return {};
}

// A colon-separated list; a "C" entry means English from there on.
void appendPreferences(std::vector<std::string>& names, std::string_view list) {
    while (!list.empty()) {
        const auto colon = list.find(':');
        const auto preference = list.substr(0, colon);
        list = colon == std::string_view::npos ? std::string_view() : list.substr(colon + 1);
        if (preference.empty()) continue;
        if (isPortableLocale(preference)) break;
        appendVariants(names, preference);
    }
}

} // namespace

// One pass over the environment rather than a getenv per variable: every text looked up reads
// them, and a menu looks up dozens. As with getenv, the first definition of a name counts.
LocaleEnvironment LocaleEnvironment::fromProcess() {
    static constexpr std::string_view kNames[] = {"LANGUAGE=", "LC_ALL=", "LC_MESSAGES=", "LANG="};
    const char* found[std::size(kNames)] = {};
    for (char** entry = environ; entry && *entry; ++entry) {
        if ((*entry)[0] != 'L') continue;
        for (std::size_t i = 0; i < std::size(kNames); ++i) {
            if (found[i] || std::strncmp(*entry, kNames[i].data(), kNames[i].size()) != 0) continue;
            found[i] = *entry + kNames[i].size();
            break;
        }
    }
    auto text = [](const char* value) { return std::string(value ? value : ""); };
    return {text(found[0]), text(found[1]), text(found[2]), text(found[3])};
}

std::vector<std::string> catalogueLanguages(const LocaleEnvironment& environment) {
    std::vector<std::string> names;
    const std::string locale = effectiveLocale(environment);
    if (!isPortableLocale(locale))
        appendPreferences(names, environment.language.empty() ? locale : environment.language);
    appendUnique(names, "en");
    return names;
}

} // namespace px
