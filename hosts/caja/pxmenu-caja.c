/* The pxmenu entries in Caja's context menus and tool bar: selected items (kind 0), the folder
 * background (kind 1) and the tool bar (kind 3). */
#include "extension/pxmenu_service.h"
#include "pxmenu-gtk-menu.h"

#include <libcaja-extension/caja-extension-types.h>
#include <libcaja-extension/caja-file-info.h>
#include <libcaja-extension/caja-menu-provider.h>

#define PXMENU_EXPORT __attribute__((visibility("default")))

typedef struct {
    GObject parent;
} PxmenuCajaProvider;

typedef struct {
    GObjectClass parent;
} PxmenuCajaProviderClass;

static void menu_provider_init(CajaMenuProviderIface* iface);

G_DEFINE_DYNAMIC_TYPE_EXTENDED(PxmenuCajaProvider, pxmenu_caja_provider, G_TYPE_OBJECT, 0,
                               G_IMPLEMENT_INTERFACE_DYNAMIC(CAJA_TYPE_MENU_PROVIDER,
                                                             menu_provider_init))

static GObject* new_item(const char* name, const char* label, const char* tooltip,
                         const char* icon) {
    return G_OBJECT(caja_menu_item_new(name, label, tooltip, icon));
}

static GObject* new_menu(void) {
    return G_OBJECT(caja_menu_new());
}

static void set_submenu(GObject* item, GObject* menu) {
    caja_menu_item_set_submenu(CAJA_MENU_ITEM(item), CAJA_MENU(menu));
}

static void append(GObject* menu, GObject* item) {
    caja_menu_append_item(CAJA_MENU(menu), CAJA_MENU_ITEM(item));
}

static const PxmenuHostMenu host_menu = {new_item, NULL, new_menu, set_submenu, append};

static char* uri_of(gpointer file) {
    return caja_file_info_get_uri(CAJA_FILE_INFO(file));
}

static GList* get_file_items(CajaMenuProvider* provider, GtkWidget* window, GList* files) {
    (void)provider;
    (void)window;
    if (!files) return NULL;
    guint count = 0;
    char** uris = pxmenu_gtk_uris_of(files, uri_of, &count);
    GList* items = pxmenu_gtk_menu_items(&host_menu, (const char* const*)uris, count, NULL, 0);
    g_strfreev(uris);
    return items;
}

static GList* get_background_items(CajaMenuProvider* provider, GtkWidget* window,
                                   CajaFileInfo* folder) {
    (void)provider;
    (void)window;
    if (!folder) return NULL;
    char* uri = caja_file_info_get_uri(folder);
    GList* items = pxmenu_gtk_menu_items(&host_menu, NULL, 0, uri, 1);
    g_free(uri);
    return items;
}

/* Caja's tool bar: kind 3 for the folder shown. */
static GList* get_toolbar_items(CajaMenuProvider* provider, GtkWidget* window,
                                CajaFileInfo* folder) {
    (void)provider;
    (void)window;
    if (!folder) return NULL;
    char* uri = caja_file_info_get_uri(folder);
    GList* items = pxmenu_gtk_menu_items(&host_menu, NULL, 0, uri, 3);
    g_free(uri);
    return items;
}

static void menu_provider_init(CajaMenuProviderIface* iface) {
    iface->get_file_items = get_file_items;
    iface->get_background_items = get_background_items;
    iface->get_toolbar_items = get_toolbar_items;
}

static void pxmenu_caja_provider_init(PxmenuCajaProvider* self) {
    (void)self;
}

static void pxmenu_caja_provider_class_init(PxmenuCajaProviderClass* klass) {
    (void)klass;
}

static void pxmenu_caja_provider_class_finalize(PxmenuCajaProviderClass* klass) {
    (void)klass;
}

static GType provider_types[1];

PXMENU_EXPORT void caja_module_initialize(GTypeModule* module) {
    pxmenu_caja_provider_register_type(module);
    provider_types[0] = pxmenu_caja_provider_get_type();
    pxmenu_host_loaded();
}

PXMENU_EXPORT void caja_module_shutdown(void) {}

PXMENU_EXPORT void caja_module_list_types(const GType** types, int* count) {
    *types = provider_types;
    *count = G_N_ELEMENTS(provider_types);
}
