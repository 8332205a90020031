/* The pxmenu entries in Nemo's context menus: selected items (kind 0) and the folder
 * background (kind 1). */
#include "extension/pxmenu_service.h"
#include "pxmenu-gtk-menu.h"

#include <libnemo-extension/nemo-extension-types.h>
#include <libnemo-extension/nemo-file-info.h>
#include <libnemo-extension/nemo-menu-provider.h>

#define PXMENU_EXPORT __attribute__((visibility("default")))

typedef struct {
    GObject parent;
} PxmenuNemoProvider;

typedef struct {
    GObjectClass parent;
} PxmenuNemoProviderClass;

static void menu_provider_init(NemoMenuProviderIface* iface);

G_DEFINE_DYNAMIC_TYPE_EXTENDED(PxmenuNemoProvider, pxmenu_nemo_provider, G_TYPE_OBJECT, 0,
                               G_IMPLEMENT_INTERFACE_DYNAMIC(NEMO_TYPE_MENU_PROVIDER,
                                                             menu_provider_init))

static GObject* new_item(const char* name, const char* label, const char* tooltip,
                         const char* icon) {
    return G_OBJECT(nemo_menu_item_new(name, label, tooltip, icon));
}

static GObject* new_menu(void) {
    return G_OBJECT(nemo_menu_new());
}

static void set_submenu(GObject* item, GObject* menu) {
    nemo_menu_item_set_submenu(NEMO_MENU_ITEM(item), NEMO_MENU(menu));
}

static void append(GObject* menu, GObject* item) {
    nemo_menu_append_item(NEMO_MENU(menu), NEMO_MENU_ITEM(item));
}

static GObject* new_separator(const char* name) {
    return G_OBJECT(nemo_menu_item_new_separator(name));
}

static const PxmenuHostMenu host_menu = {new_item, new_separator, new_menu, set_submenu, append};

static char* uri_of(gpointer file) {
    return nemo_file_info_get_uri(NEMO_FILE_INFO(file));
}

static GList* get_file_items(NemoMenuProvider* provider, GtkWidget* window, GList* files) {
    (void)provider;
    (void)window;
    if (!files) return NULL;
    guint count = 0;
    char** uris = pxmenu_gtk_uris_of(files, uri_of, &count);
    GList* items = pxmenu_gtk_menu_items(&host_menu, (const char* const*)uris, count, NULL, 0);
    g_strfreev(uris);
    return items;
}

static GList* get_background_items(NemoMenuProvider* provider, GtkWidget* window,
                                   NemoFileInfo* folder) {
    (void)provider;
    (void)window;
    if (!folder) return NULL;
    char* uri = nemo_file_info_get_uri(folder);
    GList* items = pxmenu_gtk_menu_items(&host_menu, NULL, 0, uri, 1);
    g_free(uri);
    return items;
}

static void menu_provider_init(NemoMenuProviderIface* iface) {
    iface->get_file_items = get_file_items;
    iface->get_background_items = get_background_items;
}

static void pxmenu_nemo_provider_init(PxmenuNemoProvider* self) {
    (void)self;
}

static void pxmenu_nemo_provider_class_init(PxmenuNemoProviderClass* klass) {
    (void)klass;
}

static void pxmenu_nemo_provider_class_finalize(PxmenuNemoProviderClass* klass) {
    (void)klass;
}

static GType provider_types[1];

PXMENU_EXPORT void nemo_module_initialize(GTypeModule* module) {
    pxmenu_nemo_provider_register_type(module);
    provider_types[0] = pxmenu_nemo_provider_get_type();
    pxmenu_host_loaded();
}

PXMENU_EXPORT void nemo_module_shutdown(void) {}

PXMENU_EXPORT void nemo_module_list_types(const GType** types, int* count) {
    *types = provider_types;
    *count = G_N_ELEMENTS(provider_types);
}
