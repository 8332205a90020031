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

/* The URIs of a list of file objects, read with the host's getter; free with g_strfreev. */
char** pxmenu_gtk_uris_of(GList* files, char* (*get_uri)(gpointer file), guint* count);

G_END_DECLS

#endif
