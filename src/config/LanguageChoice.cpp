#include "config/LanguageChoice.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace px {

namespace {

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

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

LocaleEnvironment LocaleEnvironment::fromProcess() {
    return {variable("LANGUAGE"), variable("LC_ALL"), variable("LC_MESSAGES"), variable("LANG")};
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
