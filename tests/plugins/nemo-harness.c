/* Loading the Nemo plugin as Nemo does, with file objects that only know their URI. */
#include "harness-host.h"

#include <libnemo-extension/nemo-extension-types.h>
#include <libnemo-extension/nemo-file-info.h>
#include <libnemo-extension/nemo-menu-provider.h>

static char* file_uri(NemoFileInfo* file) {
    return harness_file_uri(file);
}

static void file_info_init(gpointer iface, gpointer data) {
    (void)data;
    ((NemoFileInfoInterface*)iface)->get_uri = file_uri;
}

static GObject* provider;

gboolean harness_load(const char* plugin_path) {
    harness_file_implement(NEMO_TYPE_FILE_INFO, file_info_init);
    GTypeModule* module =
        harness_type_module_new(harness_module_type(), plugin_path, "nemo_module");
    if (!module) return FALSE;
    const GType* types = NULL;
    int count = 0;
    harness_type_module_types(module, &types, &count);
    provider = harness_new_provider(types, count, NEMO_TYPE_MENU_PROVIDER);
    return provider != NULL;
}

GList* harness_file_items(const char* const* uris, guint count) {
    GList* files = NULL;
    for (guint i = 0; i < count; ++i)
        files = g_list_prepend(files, harness_file_new(uris[i]));
    files = g_list_reverse(files);
    GList* items = NEMO_MENU_PROVIDER_GET_IFACE(provider)->get_file_items(
        NEMO_MENU_PROVIDER(provider), NULL, files);
    g_list_free_full(files, g_object_unref);
    return items;
}

GList* harness_folder_items(const char* uri, int kind) {
    GObject* folder = harness_file_new(uri);
    NemoMenuProviderInterface* iface = NEMO_MENU_PROVIDER_GET_IFACE(provider);
    GList* items = kind == 1 ? iface->get_background_items(NEMO_MENU_PROVIDER(provider), NULL,
                                                           NEMO_FILE_INFO(folder))
                             : NULL;
    g_object_unref(folder);
    return items;
}

GList* harness_submenu_items(GObject* item) {
    NemoMenu* menu = NULL;
    g_object_get(item, "menu", &menu, NULL);
    if (!menu) return NULL;
    GList* items = nemo_menu_get_items(menu);
    g_object_unref(menu);
    return items;
}

gboolean harness_is_separator(GObject* item) {
    gboolean separator = FALSE;
    g_object_get(item, "separator", &separator, NULL);
    return separator;
}

void harness_activate(GObject* item) {
    nemo_menu_item_activate(NEMO_MENU_ITEM(item));
}

const char* const harness_tooltip_property = "tip";
const gboolean harness_has_toolbar = FALSE;
