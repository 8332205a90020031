/* The pxmenu entries in Nemo's context menus: selected items (kind 0) and the folder
 * background (kind 1). */
#include "extension/pxmenu_service.h"
#include "pxmenu-gtk-menu.h"

#include <libnemo-extension/nemo-extension-types.h>
#include <libnemo-extension/nemo-file-info.h>
#include <libnemo-extension/nemo-menu-provider.h>

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
    return pxmenu_gtk_file_menu_items(&host_menu, files, uri_of, 0);
}

static GList* get_background_items(NemoMenuProvider* provider, GtkWidget* window,
                                   NemoFileInfo* folder) {
    (void)provider;
    (void)window;
    return pxmenu_gtk_folder_menu_items(&host_menu, folder, uri_of, 1);
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

PXMENU_DEFINE_TYPE_MODULE(nemo, pxmenu_nemo_provider_register_type, pxmenu_nemo_provider_get_type)
