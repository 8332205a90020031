// The C face of the menu service: C structures over the service's tree, and no exception ever
// leaves a function here. The service reads the user's store, opened once per process.
#include "extension/MenuActivation.h"
#include "extension/MenuService.h"
#include "extension/pxmenu_service.h"
#include "platform/linux/UserStore.h"

#include <cstdio>
#include <exception>
#include <memory>
#include <unordered_map>

struct pxmenu_menu {
    std::shared_ptr<const px::MenuRequest> request;
    px::ServiceMenu tree;
    std::vector<std::unique_ptr<std::vector<pxmenu_entry>>> levels;
    std::unordered_map<const pxmenu_entry*, const px::ServiceEntry*> sources;
};

struct pxmenu_activation {
    std::shared_ptr<const px::MenuRequest> request;
    std::int64_t tag = 0;
    std::vector<std::string> keyPath;
};

namespace {

const pxmenu_entry* addLevel(pxmenu_menu& menu, const px::ServiceMenu& entries) {
    auto level = std::make_unique<std::vector<pxmenu_entry>>(entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const auto& source = entries[i];
        auto& entry = (*level)[i];
        entry.label = source.label.c_str();
        entry.icon = source.icon.c_str();
        entry.tooltip = source.tooltip.c_str();
        entry.tag = source.tag;
        entry.separator = source.separator;
        entry.enabled = source.enabled;
        entry.children = source.children.empty() ? nullptr : addLevel(menu, source.children);
        entry.child_count = source.children.size();
        menu.sources[&entry] = &source;
    }
    const pxmenu_entry* first = level->data();
    menu.levels.push_back(std::move(level));
    return first;
}

template <typename Call, typename Fallback>
auto trapped(const char* what, Call call, Fallback fallback) noexcept -> decltype(call()) {
    try {
        return call();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "pxmenu plugin: %s: %s\n", what, error.what());
    } catch (...) {
        std::fprintf(stderr, "pxmenu plugin: %s: unknown failure\n", what);
    }
    return fallback();
}

px::MenuService& pluginService() {
    static px::MenuService service(px::platform::openUserStore);
    return service;
}

} // namespace

extern "C" {

void pxmenu_host_loaded(void) {
    trapped(
        "start-up", [] { pluginService().hostLoaded(); }, [] {});
}

pxmenu_menu* pxmenu_menu_build(const char* const* paths, size_t path_count, const char* target,
                               int kind) {
    return trapped(
        "menu",
        [&] {
            auto request = std::make_shared<px::MenuRequest>();
            for (size_t i = 0; i < path_count; ++i)
                if (paths[i]) request->paths.emplace_back(paths[i]);
            request->target = target ? target : "";
            request->kind = kind;
            auto menu = std::make_unique<pxmenu_menu>();
            menu->tree = pluginService().menu(*request);
            menu->request = std::move(request);
            addLevel(*menu, menu->tree);
            return menu.release();
        },
        [] { return static_cast<pxmenu_menu*>(new (std::nothrow) pxmenu_menu()); });
}

const pxmenu_entry* pxmenu_menu_entries(const pxmenu_menu* menu, size_t* count) {
    bool empty = !menu || menu->levels.empty() || menu->tree.empty();
    if (count) *count = empty ? 0 : menu->tree.size();
    return empty ? nullptr : menu->levels.back()->data();
}

void pxmenu_menu_free(pxmenu_menu* menu) {
    delete menu;
}

pxmenu_activation* pxmenu_activation_new(const pxmenu_menu* menu, const pxmenu_entry* entry) {
    return trapped(
        "menu entry",
        [&]() -> pxmenu_activation* {
            if (!menu || !entry) return nullptr;
            auto found = menu->sources.find(entry);
            if (found == menu->sources.end()) return nullptr;
            return new pxmenu_activation{menu->request, found->second->tag, found->second->keyPath};
        },
        [] { return static_cast<pxmenu_activation*>(nullptr); });
}

int pxmenu_activation_run(const pxmenu_activation* activation) {
    return trapped(
        "activation",
        [&] {
            if (!activation || !activation->request) return 1;
            auto started = px::activate(*activation->request, activation->tag, activation->keyPath);
            if (started.isError())
                std::fprintf(stderr, "pxmenu plugin: %s\n", started.error().message.c_str());
            return started.isError() ? 1 : 0;
        },
        [] { return 1; });
}

void pxmenu_activation_free(pxmenu_activation* activation) {
    delete activation;
}

} // extern "C"
