/* The pxmenu entries in Thunar's context menus: selected items (kind 0), the folder background
 * (kind 1) and the side pane (kind 2). */
#include "extension/pxmenu_service.h"
#include "pxmenu-gtk-menu.h"

#include <string.h>
#include <thunarx/thunarx.h>

#define PXMENU_EXPORT __attribute__((visibility("default")))

typedef struct {
    GObject parent;
} PxmenuThunarProvider;

typedef struct {
    GObjectClass parent;
} PxmenuThunarProviderClass;

static void menu_provider_init(ThunarxMenuProviderIface* iface);

THUNARX_DEFINE_TYPE_WITH_CODE(PxmenuThunarProvider, pxmenu_thunar_provider, G_TYPE_OBJECT,
                              THUNARX_IMPLEMENT_INTERFACE(THUNARX_TYPE_MENU_PROVIDER,
                                                          menu_provider_init))

static GObject* new_item(const char* name, const char* label, const char* tooltip,
                         const char* icon) {
    return G_OBJECT(thunarx_menu_item_new(name, label, tooltip, icon));
}

static GObject* new_menu(void) {
    return G_OBJECT(thunarx_menu_new());
}

static void set_submenu(GObject* item, GObject* menu) {
    thunarx_menu_item_set_menu(THUNARX_MENU_ITEM(item), THUNARX_MENU(menu));
}

static void append(GObject* menu, GObject* item) {
    thunarx_menu_append_item(THUNARX_MENU(menu), THUNARX_MENU_ITEM(item));
}

static const PxmenuHostMenu host_menu = {new_item, NULL, new_menu, set_submenu, append};

static char* uri_of(gpointer file) {
    return thunarx_file_info_get_uri(THUNARX_FILE_INFO(file));
}

/* Thunar asks the same provider for its views and its side pane; the side pane's trees have
 * the keyboard focus when they open a menu. */
static gboolean from_side_pane(GtkWidget* window) {
    if (!GTK_IS_WINDOW(window)) return FALSE;
    GtkWidget* focus = gtk_window_get_focus(GTK_WINDOW(window));
    const char* type = focus ? G_OBJECT_TYPE_NAME(focus) : "";
    return strcmp(type, "ThunarTreeView") == 0 || strcmp(type, "ThunarShortcutsView") == 0;
}

static GList* get_file_menu_items(ThunarxMenuProvider* provider, GtkWidget* window, GList* files) {
    (void)provider;
    return pxmenu_gtk_file_menu_items(&host_menu, files, uri_of, from_side_pane(window) ? 2 : 0);
}

static GList* get_folder_menu_items(ThunarxMenuProvider* provider, GtkWidget* window,
                                    ThunarxFileInfo* folder) {
    (void)provider;
    return pxmenu_gtk_folder_menu_items(&host_menu, folder, uri_of, from_side_pane(window) ? 2 : 1);
}

static void menu_provider_init(ThunarxMenuProviderIface* iface) {
    iface->get_file_menu_items = get_file_menu_items;
    iface->get_folder_menu_items = get_folder_menu_items;
}

static void pxmenu_thunar_provider_init(PxmenuThunarProvider* self) {
    (void)self;
}

static void pxmenu_thunar_provider_class_init(PxmenuThunarProviderClass* klass) {
    (void)klass;
}

static GType provider_types[1];

PXMENU_EXPORT void thunar_extension_initialize(ThunarxProviderPlugin* plugin) {
    pxmenu_thunar_provider_register_type(plugin);
    provider_types[0] = pxmenu_thunar_provider_get_type();
    pxmenu_host_loaded();
}

PXMENU_EXPORT void thunar_extension_shutdown(void) {}

PXMENU_EXPORT void thunar_extension_list_types(const GType** types, gint* count) {
    *types = provider_types;
    *count = G_N_ELEMENTS(provider_types);
}
