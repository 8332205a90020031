/* Loading the Thunar plugin as Thunar does, with file objects that only know their URI. */
#include "harness-host.h"

#include <thunarx/thunarx.h>

/* Thunar hands its plugins a type module that registers their types for them. */
typedef HarnessModule HarnessThunarModule;
typedef HarnessModuleClass HarnessThunarModuleClass;

static GType register_type(ThunarxProviderPlugin* plugin, GType parent, const gchar* name,
                           const GTypeInfo* info, GTypeFlags flags) {
    return g_type_module_register_type(G_TYPE_MODULE(plugin), parent, name, info, flags);
}

static void add_interface(ThunarxProviderPlugin* plugin, GType instance_type, GType interface_type,
                          const GInterfaceInfo* info) {
    g_type_module_add_interface(G_TYPE_MODULE(plugin), instance_type, interface_type, info);
}

static gboolean get_resident(const ThunarxProviderPlugin* plugin) {
    (void)plugin;
    return TRUE;
}

static void set_resident(ThunarxProviderPlugin* plugin, gboolean resident) {
    (void)plugin;
    (void)resident;
}

static void provider_plugin_init(ThunarxProviderPluginIface* iface) {
    iface->get_resident = get_resident;
    iface->set_resident = set_resident;
    iface->register_type = register_type;
    iface->add_interface = add_interface;
}

G_DEFINE_TYPE_WITH_CODE(HarnessThunarModule, harness_thunar_module, harness_module_type(),
                        G_IMPLEMENT_INTERFACE(THUNARX_TYPE_PROVIDER_PLUGIN, provider_plugin_init))

static void harness_thunar_module_init(HarnessThunarModule* self) {
    (void)self;
}

static void get_property(GObject* object, guint id, GValue* value, GParamSpec* pspec) {
    (void)object;
    (void)id;
    (void)pspec;
    g_value_set_boolean(value, TRUE);
}

static void set_property(GObject* object, guint id, const GValue* value, GParamSpec* pspec) {
    (void)object;
    (void)id;
    (void)value;
    (void)pspec;
}

static void harness_thunar_module_class_init(HarnessThunarModuleClass* klass) {
    G_OBJECT_CLASS(klass)->get_property = get_property;
    G_OBJECT_CLASS(klass)->set_property = set_property;
    g_object_class_override_property(G_OBJECT_CLASS(klass), 1, "resident");
}

static char* file_uri(ThunarxFileInfo* file) {
    return harness_file_uri(file);
}

static void file_info_init(gpointer iface, gpointer data) {
    (void)data;
    ((ThunarxFileInfoIface*)iface)->get_uri = file_uri;
}

static GObject* provider;

gboolean harness_load(const char* plugin_path) {
    harness_file_implement(THUNARX_TYPE_FILE_INFO, file_info_init);
    GTypeModule* module =
        harness_type_module_new(harness_thunar_module_get_type(), plugin_path, "thunar_extension");
    if (!module) return FALSE;
    const GType* types = NULL;
    int count = 0;
    harness_type_module_types(module, &types, &count);
    provider = harness_new_provider(types, count, THUNARX_TYPE_MENU_PROVIDER);
    return provider != NULL;
}

GList* harness_file_items(const char* const* uris, guint count) {
    GList* files = NULL;
    for (guint i = 0; i < count; ++i)
        files = g_list_prepend(files, harness_file_new(uris[i]));
    files = g_list_reverse(files);
    GList* items = THUNARX_MENU_PROVIDER_GET_IFACE(provider)->get_file_menu_items(
        THUNARX_MENU_PROVIDER(provider), NULL, files);
    g_list_free_full(files, g_object_unref);
    return items;
}

GList* harness_folder_items(const char* uri, int kind) {
    GObject* folder = harness_file_new(uri);
    GList* items = kind == 1 ? THUNARX_MENU_PROVIDER_GET_IFACE(provider)->get_folder_menu_items(
                                   THUNARX_MENU_PROVIDER(provider), NULL, THUNARX_FILE_INFO(folder))
                             : NULL;
    g_object_unref(folder);
    return items;
}

GList* harness_submenu_items(GObject* item) {
    ThunarxMenu* menu = NULL;
    g_object_get(item, "menu", &menu, NULL);
    if (!menu) return NULL;
    GList* items = thunarx_menu_get_items(menu);
    g_object_unref(menu);
    return items;
}

gboolean harness_is_separator(GObject* item) {
    (void)item;
    return FALSE;
}

void harness_activate(GObject* item) {
    thunarx_menu_item_activate(THUNARX_MENU_ITEM(item));
}

const char* const harness_tooltip_property = "tooltip";
const gboolean harness_has_toolbar = FALSE;
