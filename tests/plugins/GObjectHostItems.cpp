// The harness side of the GObject hosts (GNOME Files, Nemo, Caja, Thunar), over the C
// functions of each host's harness file.
#include "HostHarness.h"
#include "harness-host.h"

#include <memory>

namespace px::test {

namespace {

std::string stringProperty(GObject* object, const char* property) {
    char* value = nullptr;
    g_object_get(object, property, &value, nullptr);
    std::string result = value ? value : "";
    g_free(value);
    return result;
}

// Reads and releases a list of new references; each item keeps its object for activation.
HostItems read(GList* items) {
    HostItems result;
    for (GList* node = items; node; node = node->next) {
        auto* object = G_OBJECT(node->data);
        std::shared_ptr<GObject> owner(G_OBJECT(g_object_ref(object)), g_object_unref);
        HostItem item;
        item.separator = harness_is_separator(object);
        item.name = stringProperty(object, "name");
        item.label = stringProperty(object, "label");
        item.tooltip = stringProperty(object, harness_tooltip_property);
        item.icon = stringProperty(object, "icon");
        gboolean sensitive = TRUE;
        g_object_get(object, "sensitive", &sensitive, nullptr);
        item.sensitive = sensitive;
        item.activate = [owner] { harness_activate(owner.get()); };
        if (GList* children = harness_submenu_items(object)) item.children = read(children);
        result.push_back(std::move(item));
    }
    g_list_free_full(items, g_object_unref);
    return result;
}

} // namespace

const bool kHostHasToolbar = harness_has_toolbar;

bool loadHostPlugin(const std::string& path) {
    g_log_set_always_fatal(static_cast<GLogLevelFlags>(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING));
    return harness_load(path.c_str());
}

HostItems hostFileItems(const std::vector<std::string>& uris) {
    std::vector<const char*> pointers;
    for (const auto& uri : uris)
        pointers.push_back(uri.c_str());
    return read(harness_file_items(pointers.data(), static_cast<guint>(pointers.size())));
}

HostItems hostFolderItems(const std::string& uri, int kind) {
    return read(harness_folder_items(uri.c_str(), kind));
}

} // namespace px::test
