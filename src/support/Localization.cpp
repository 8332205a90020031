#include "support/Localization.h"

#include "support/FileIO.h"
#include "support/LanguageChoice.h"
#include "support/MoCatalogue.h"
#include "support/InstalledFolder.h"

#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

// glibc's dgettext is deliberately not used. Under the C locale (a test with LC_ALL=C, or a
// program that never calls setlocale) it never opens a catalogue and hands back the msgid,
// but the English catalogue must apply there too: it is what turns keys such as "Delete Tip"
// into sentences. It also binds one folder per domain, while the catalogues are searched in
// several (PXMENU_LOCALEDIR, beside the installed program, the build tree, the installed tree).

namespace px {

namespace {

std::string customCatalogueFolder() {
    const char* custom = std::getenv("PXMENU_LOCALEDIR");
    return custom ? custom : "";
}

std::vector<std::string> catalogueFolders(const std::string& custom) {
    std::vector<std::string> folders;
    if (!custom.empty()) folders.push_back(custom);
    folders.push_back(installedFolder("share/locale"));
    folders.emplace_back(PX_BUILD_LOCALEDIR);
    folders.emplace_back(PX_INSTALL_LOCALEDIR);
    return folders;
}

std::string joined(const std::vector<std::string>& parts, char separator) {
    std::string result;
    for (const auto& part : parts)
        result.append(part).push_back(separator);
    return result;
}

using CataloguePtr = std::shared_ptr<const MoCatalogue>;

// Catalogues loaded once per file, and the catalogue chosen for each combination of language
// preferences and folders. A damaged file is reported once and passed over, so the search goes
// on with the next folder or language and ends, at worst, with the keys themselves.
class CatalogueCache {
  public:
    CataloguePtr catalogueFor(const std::vector<std::string>& languages,
                              const std::vector<std::string>& folders) {
        const std::string choice = joined(folders, '\n') + '\n' + joined(languages, ':');
        std::lock_guard lock(m_mutex);
        if (auto found = m_byChoice.find(choice); found != m_byChoice.end()) return found->second;
        return m_byChoice[choice] = search(languages, folders);
    }

    void clear() {
        std::lock_guard lock(m_mutex);
        m_byChoice.clear();
        m_byPath.clear();
        ++m_generation;
    }

    // Changes whenever the cache is cleared.
    std::uint64_t generation() const { return m_generation; }

  private:
    CataloguePtr search(const std::vector<std::string>& languages,
                        const std::vector<std::string>& folders) {
        for (const auto& language : languages)
            for (const auto& folder : folders)
                if (auto catalogue = loadOnce(folder + "/" + language + "/LC_MESSAGES/pxmenu.mo"))
                    return catalogue;
        return nullptr;
    }

    CataloguePtr loadOnce(const std::string& path) {
        if (auto found = m_byPath.find(path); found != m_byPath.end()) return found->second;
        if (!io::exists(path)) return nullptr;
        return m_byPath[path] = load(path);
    }

    static CataloguePtr load(const std::string& path) {
        auto bytes = io::readWholeFile(path);
        if (bytes.isError()) return ignored(path, bytes.error().message);
        auto catalogue = MoCatalogue::parse(bytes.value());
        if (catalogue.isError()) return ignored(path, catalogue.error().message);
        return std::make_shared<const MoCatalogue>(catalogue.releaseValue());
    }

    static CataloguePtr ignored(const std::string& path, const std::string& reason) {
        fmt::print(stderr, "pxmenu: ignoring message catalogue {}: {}\n", path, reason);
        return nullptr;
    }

    std::mutex m_mutex;
    std::atomic<std::uint64_t> m_generation = 0;
    std::map<std::string, CataloguePtr> m_byChoice;
    std::map<std::string, CataloguePtr> m_byPath;
};

CatalogueCache& catalogueCache() {
    static CatalogueCache cache;
    return cache;
}

bool sameEnvironment(const LocaleEnvironment& a, const LocaleEnvironment& b) {
    return a.language == b.language && a.lcAll == b.lcAll && a.lcMessages == b.lcMessages &&
           a.lang == b.lang;
}

// The catalogue for the current variables. A menu asks for dozens of texts, and working out
// the language list and the cache key costs far more than the lookup itself, so each thread
// keeps its last answer for as long as the variables and the cache stay as they were.
CataloguePtr currentCatalogue() {
    struct LastChoice {
        LocaleEnvironment environment;
        std::string customFolder;
        std::uint64_t generation = 0;
        CataloguePtr catalogue;
        bool valid = false;
    };
    thread_local LastChoice last;
    const std::uint64_t generation = catalogueCache().generation();
    LocaleEnvironment environment = LocaleEnvironment::fromProcess();
    std::string customFolder = customCatalogueFolder();
    if (last.valid && last.generation == generation && last.customFolder == customFolder &&
        sameEnvironment(last.environment, environment))
        return last.catalogue;
    CataloguePtr catalogue = catalogueCache().catalogueFor(catalogueLanguages(environment),
                                                           catalogueFolders(customFolder));
    last = {std::move(environment), std::move(customFolder), generation, catalogue, true};
    return catalogue;
}

struct Placeholder {
    std::size_t length = 0;
    bool isPercent = false;
    std::optional<std::size_t> position; // "%2$@" names its argument
};

// The position prefix "N$" of a placeholder, read after its "%".
std::optional<std::size_t> readPosition(std::string_view text, std::size_t& at) {
    std::size_t end = at, value = 0;
    while (end < text.size() && end - at < 3 && text[end] >= '0' && text[end] <= '9')
        value = value * 10 + static_cast<std::size_t>(text[end++] - '0');
    if (end == at || end >= text.size() || text[end] != '$' || value == 0) return std::nullopt;
    at = end + 1;
    return value - 1;
}

bool isOneOf(std::string_view text, std::size_t at, std::string_view characters) {
    return at < text.size() && characters.find(text[at]) != std::string_view::npos;
}

// The placeholder at the start of `text` (which begins with "%"), if it is one this file fills.
std::optional<Placeholder> readPlaceholder(std::string_view text) {
    if (isOneOf(text, 1, "%")) return Placeholder{2, true, std::nullopt};
    std::size_t at = 1;
    Placeholder placeholder;
    placeholder.position = readPosition(text, at);
    if (isOneOf(text, at, "lzqhjt")) ++at; // length modifiers: "l", "ll", "hh", ...
    if (isOneOf(text, at, "lzqhjt")) ++at;
    if (!isOneOf(text, at, "@dius")) return std::nullopt;
    placeholder.length = at + 1;
    return placeholder;
}

} // namespace

std::string localized(std::string_view key) {
    if (key.empty()) return {};
    const auto catalogue = currentCatalogue();
    if (catalogue)
        if (auto text = catalogue->find(key)) return std::string(*text);
    return std::string(key);
}

std::string formatLocalizedText(std::string_view text, std::span<const std::string> arguments) {
    std::string result;
    std::size_t next = 0;
    for (std::size_t i = 0; i < text.size();) {
        const auto placeholder =
            text[i] == '%' ? readPlaceholder(text.substr(i)) : std::optional<Placeholder>();
        if (!placeholder) {
            result.push_back(text[i++]);
            continue;
        }
        const std::size_t index = placeholder->position.value_or(next);
        if (!placeholder->position && !placeholder->isPercent) ++next;
        if (placeholder->isPercent)
            result.push_back('%');
        else if (index < arguments.size())
            result += arguments[index];
        else
            result += text.substr(i, placeholder->length);
        i += placeholder->length;
    }
    return result;
}

void resetLocalizationForTesting() {
    catalogueCache().clear();
}

} // namespace px
