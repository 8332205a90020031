#include "extension/MenuService.h"

#include "extension/FinderSync.h"
#include "extension/MenuActivation.h"
#include "extension/MenuBuilder.h"
#include "support/Localization.h"
#include "support/Xdg.h"

#include <cstdio>
#include <exception>
#include <glib.h>
#include <map>
#include <sys/stat.h>

namespace px {

namespace {

// The one call into the menu builder. Everything else here is the plugins' side.
Menu buildCoreMenu(const MenuRequest& request, const std::shared_ptr<PXMenuManager>& store) {
    Request built(
        {request.paths, request.target, static_cast<MenuKind>(request.kind), {}, {}, store});
    return buildMenu(built).entries;
}

void clearCutList(const std::shared_ptr<PXMenuManager>& store) {
    FinderSync sync(store, {}, FinderSync::Options{.clearCutList = true});
}

std::string validUtf8(const std::string& text) {
    gchar* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
    std::string result = valid;
    g_free(valid);
    return result;
}

class TreeConverter {
  public:
    ServiceMenu convert(const Menu& menu, const std::vector<std::string>& parentPath) {
        ServiceMenu result;
        result.reserve(menu.size());
        for (const auto& entry : menu)
            result.push_back(convertEntry(entry, parentPath));
        return result;
    }

  private:
    ServiceEntry convertEntry(const MenuEntry& entry, const std::vector<std::string>& parentPath) {
        ServiceEntry out;
        out.title = entry.title;
        out.label = validUtf8(entry.title);
        out.icon = entry.icon;
        out.tag = entry.tag;
        out.separator = entry.separator;
        out.enabled = entry.enabled;
        out.keyPath = parentPath;
        out.keyPath.push_back(entry.key);
        out.tooltip = out.label.empty() ? localized("CFBundleDisplayName") : out.label;
        if (!entry.children.empty()) {
            out.label = uniqueSubmenuLabel(out.label);
            out.children = convert(entry.children, out.keyPath);
        }
        return out;
    }

    // A label seen before gets one zero-width space more for each earlier use: it looks the
    // same and differs as a string.
    std::string uniqueSubmenuLabel(const std::string& label) {
        int& uses = m_submenuLabels[label];
        std::string result = label;
        for (int i = 0; i < uses; ++i)
            result += "\u200B";
        ++uses;
        return result;
    }

    std::map<std::string, int> m_submenuLabels;
};

bool configurationExists() {
    struct stat info {};
    return ::stat((xdg::settingsFolder() + "/group.plist").c_str(), &info) == 0;
}

void report(const char* what, const char* reason) {
    std::fprintf(stderr, "pxmenu plugin: %s: %s\n", what, reason);
}

} // namespace

const std::shared_ptr<PXMenuManager>& MenuService::store() {
    if (!m_store) m_store = m_openStore();
    return m_store;
}

void MenuService::hostLoaded() noexcept {
    try {
        if (!configurationExists()) {
            requestSetup();
            return;
        }
        clearCutList(store());
    } catch (const std::exception& error) {
        report("start-up", error.what());
    } catch (...) {
        report("start-up", "unknown failure");
    }
}

ServiceMenu MenuService::menu(const MenuRequest& request) noexcept {
    try {
        return TreeConverter().convert(buildCoreMenu(request, store()), {});
    } catch (const std::exception& error) {
        report("menu", error.what());
    } catch (...) {
        report("menu", "unknown failure");
    }
    return {};
}

} // namespace px
