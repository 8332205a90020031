/* The menu items of the GObject file managers (GNOME Files, Nemo, Caja, Thunar), made once from
 * the menu service's tree through a table of the host's own item functions. */
#ifndef PXMENU_GTK_MENU_H
#define PXMENU_GTK_MENU_H

#include <glib-object.h>

G_BEGIN_DECLS

typedef struct {
    GObject* (*new_item)(const char* name, const char* label, const char* tooltip,
                         const char* icon);
    /* NULL where the host has no separator item: untitled separators are left out. */
    GObject* (*new_separator)(const char* name);
    GObject* (*new_menu)(void);
    void (*set_submenu)(GObject* item, GObject* menu);
    void (*append)(GObject* menu, GObject* item);
} PxmenuHostMenu;

/* The host's items for a request, as a new list of new references (NULL for no menu). `uris`
 * are the selected items' URIs (n_uris of them), `folder_uri` the folder shown (NULL: the
 * first item's parent). A selection with any item that is not a local file gets no menu. */
GList* pxmenu_gtk_menu_items(const PxmenuHostMenu* host, const char* const* uris, guint n_uris,
                             const char* folder_uri, int kind);

/* The same for the host's file objects, whose URIs its getter reads: the selected files, and
 * the folder shown (background, tool bar, side pane). */
typedef char* (*PxmenuUriGetter)(gpointer file);
GList* pxmenu_gtk_file_menu_items(const PxmenuHostMenu* host, GList* files, PxmenuUriGetter get_uri,
                                  int kind);
GList* pxmenu_gtk_folder_menu_items(const PxmenuHostMenu* host, gpointer folder,
                                    PxmenuUriGetter get_uri, int kind);

/* The entry points of a host that loads plugins as type modules (GNOME Files, Nemo, Caja):
 * PREFIX_module_initialize registers the provider type and tells the service the host loaded
 * it. */
#define PXMENU_DEFINE_TYPE_MODULE(prefix, register_type, get_type)                                 \
    static GType pxmenu_provider_types[1];                                                         \
    __attribute__((visibility("default"))) void prefix##_module_initialize(GTypeModule* module) {  \
        register_type(module);                                                                     \
        pxmenu_provider_types[0] = get_type();                                                     \
        pxmenu_host_loaded();                                                                      \
    }                                                                                              \
    __attribute__((visibility("default"))) void prefix##_module_shutdown(void) {}                  \
    __attribute__((visibility("default"))) void prefix##_module_list_types(const GType** types,    \
                                                                           int* count) {           \
        *types = pxmenu_provider_types;                                                            \
        *count = G_N_ELEMENTS(pxmenu_provider_types);                                              \
    }

G_END_DECLS

#endif
