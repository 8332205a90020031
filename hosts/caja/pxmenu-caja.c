/* The pxmenu entries in Caja's context menus and tool bar: selected items (kind 0), the folder
 * background (kind 1) and the tool bar (kind 3). */
#include "extension/pxmenu_service.h"
#include "pxmenu-gtk-menu.h"

#include <libcaja-extension/caja-extension-types.h>
#include <libcaja-extension/caja-file-info.h>
#include <libcaja-extension/caja-menu-provider.h>

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
    return pxmenu_gtk_file_menu_items(&host_menu, files, uri_of, 0);
}

static GList* get_background_items(CajaMenuProvider* provider, GtkWidget* window,
                                   CajaFileInfo* folder) {
    (void)provider;
    (void)window;
    return pxmenu_gtk_folder_menu_items(&host_menu, folder, uri_of, 1);
}

/* Caja's tool bar: kind 3 for the folder shown. */
static GList* get_toolbar_items(CajaMenuProvider* provider, GtkWidget* window,
                                CajaFileInfo* folder) {
    (void)provider;
    (void)window;
    return pxmenu_gtk_folder_menu_items(&host_menu, folder, uri_of, 3);
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

PXMENU_DEFINE_TYPE_MODULE(caja, pxmenu_caja_provider_register_type, pxmenu_caja_provider_get_type)
