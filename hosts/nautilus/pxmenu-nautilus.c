/* The pxmenu entries in GNOME Files' context menus: selected items (kind 0) and the folder
 * background (kind 1). */
#include "extension/pxmenu_service.h"
#include "pxmenu-gtk-menu.h"

#include <nautilus-extension.h>

#define PXMENU_EXPORT __attribute__((visibility("default")))

typedef struct {
    GObject parent;
} PxmenuNautilusProvider;

typedef struct {
    GObjectClass parent;
} PxmenuNautilusProviderClass;

static void menu_provider_init(NautilusMenuProviderInterface* iface);

G_DEFINE_DYNAMIC_TYPE_EXTENDED(PxmenuNautilusProvider, pxmenu_nautilus_provider, G_TYPE_OBJECT, 0,
                               G_IMPLEMENT_INTERFACE_DYNAMIC(NAUTILUS_TYPE_MENU_PROVIDER,
                                                             menu_provider_init))

static GObject* new_item(const char* name, const char* label, const char* tooltip,
                         const char* icon) {
    return G_OBJECT(nautilus_menu_item_new(name, label, tooltip, icon));
}

static GObject* new_menu(void) {
    return G_OBJECT(nautilus_menu_new());
}

static void set_submenu(GObject* item, GObject* menu) {
    nautilus_menu_item_set_submenu(NAUTILUS_MENU_ITEM(item), NAUTILUS_MENU(menu));
}

static void append(GObject* menu, GObject* item) {
    nautilus_menu_append_item(NAUTILUS_MENU(menu), NAUTILUS_MENU_ITEM(item));
}

static const PxmenuHostMenu host_menu = {new_item, NULL, new_menu, set_submenu, append};

static char* uri_of(gpointer file) {
    return nautilus_file_info_get_uri(NAUTILUS_FILE_INFO(file));
}

static GList* get_file_items(NautilusMenuProvider* provider, GList* files) {
    (void)provider;
    if (!files) return NULL;
    guint count = 0;
    char** uris = pxmenu_gtk_uris_of(files, uri_of, &count);
    GList* items = pxmenu_gtk_menu_items(&host_menu, (const char* const*)uris, count, NULL, 0);
    g_strfreev(uris);
    return items;
}

static GList* get_background_items(NautilusMenuProvider* provider, NautilusFileInfo* folder) {
    (void)provider;
    if (!folder) return NULL;
    char* uri = nautilus_file_info_get_uri(folder);
    GList* items = pxmenu_gtk_menu_items(&host_menu, NULL, 0, uri, 1);
    g_free(uri);
    return items;
}

static void menu_provider_init(NautilusMenuProviderInterface* iface) {
    iface->get_file_items = get_file_items;
    iface->get_background_items = get_background_items;
}

static void pxmenu_nautilus_provider_init(PxmenuNautilusProvider* self) {
    (void)self;
}

static void pxmenu_nautilus_provider_class_init(PxmenuNautilusProviderClass* klass) {
    (void)klass;
}

static void pxmenu_nautilus_provider_class_finalize(PxmenuNautilusProviderClass* klass) {
    (void)klass;
}

static GType provider_types[1];

PXMENU_EXPORT void nautilus_module_initialize(GTypeModule* module) {
    pxmenu_nautilus_provider_register_type(module);
    provider_types[0] = pxmenu_nautilus_provider_get_type();
    pxmenu_host_loaded();
}

PXMENU_EXPORT void nautilus_module_shutdown(void) {}

PXMENU_EXPORT void nautilus_module_list_types(const GType** types, int* count) {
    *types = provider_types;
    *count = G_N_ELEMENTS(provider_types);
}
