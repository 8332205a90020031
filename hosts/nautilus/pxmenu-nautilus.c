/* The pxmenu entries in GNOME Files' context menus: selected items (kind 0) and the folder
 * background (kind 1). */
#include "extension/pxmenu_service.h"
#include "pxmenu-gtk-menu.h"

#include <nautilus-extension.h>

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
    return pxmenu_gtk_file_menu_items(&host_menu, files, uri_of, 0);
}

static GList* get_background_items(NautilusMenuProvider* provider, NautilusFileInfo* folder) {
    (void)provider;
    return pxmenu_gtk_folder_menu_items(&host_menu, folder, uri_of, 1);
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

PXMENU_DEFINE_TYPE_MODULE(nautilus, pxmenu_nautilus_provider_register_type,
                          pxmenu_nautilus_provider_get_type)
