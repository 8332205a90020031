#include "pxmenu-gtk-menu.h"

#include "extension/pxmenu_service.h"

typedef struct {
    const PxmenuHostMenu* host;
    const pxmenu_menu* menu;
    guint separators;
} Builder;

static void run_activation(GObject* item, gpointer data) {
    (void)item;
    pxmenu_activation_run(data);
}

static void free_activation(gpointer data, GClosure* closure) {
    (void)closure;
    pxmenu_activation_free(data);
}

static GList* build_level(Builder* builder, const pxmenu_entry* entries, size_t count);

static GObject* build_separator(Builder* builder, const pxmenu_entry* entry) {
    char name[48];
    g_snprintf(name, sizeof name, "pxmenu::separator-%u", builder->separators++);
    if (entry->label[0] == '\0')
        return builder->host->new_separator ? builder->host->new_separator(name) : NULL;
    /* A titled separator: the title as an item that cannot be chosen. */
    GObject* item = builder->host->new_item(name, entry->label, entry->tooltip, NULL);
    g_object_set(item, "sensitive", FALSE, NULL);
    return item;
}

static GObject* build_entry(Builder* builder, const pxmenu_entry* entry) {
    if (entry->separator) return build_separator(builder, entry);
    char name[48];
    g_snprintf(name, sizeof name, "pxmenu::%" G_GINT64_FORMAT, entry->tag);
    GObject* item = builder->host->new_item(name, entry->label, entry->tooltip,
                                            entry->icon[0] ? entry->icon : NULL);
    if (!entry->enabled) g_object_set(item, "sensitive", FALSE, NULL);
    if (entry->child_count > 0) {
        GObject* submenu = builder->host->new_menu();
        GList* children = build_level(builder, entry->children, entry->child_count);
        for (GList* child = children; child; child = child->next)
            builder->host->append(submenu, child->data);
        g_list_free_full(children, g_object_unref);
        builder->host->set_submenu(item, submenu);
        g_object_unref(submenu);
        return item;
    }
    pxmenu_activation* activation = pxmenu_activation_new(builder->menu, entry);
    if (activation)
        g_signal_connect_data(item, "activate", G_CALLBACK(run_activation), activation,
                              free_activation, 0);
    return item;
}

static GList* build_level(Builder* builder, const pxmenu_entry* entries, size_t count) {
    GList* items = NULL;
    for (size_t i = 0; i < count; ++i) {
        GObject* item = build_entry(builder, &entries[i]);
        if (item) items = g_list_prepend(items, item);
    }
    return g_list_reverse(items);
}

/* The local paths of the URIs, or NULL when any is not a local file. */
static char** local_paths(const char* const* uris, guint count) {
    char** paths = g_new0(char*, count + 1);
    for (guint i = 0; i < count; ++i) {
        paths[i] = uris[i] ? g_filename_from_uri(uris[i], NULL, NULL) : NULL;
        if (!paths[i]) {
            g_strfreev(paths);
            return NULL;
        }
    }
    return paths;
}

GList* pxmenu_gtk_menu_items(const PxmenuHostMenu* host, const char* const* uris, guint n_uris,
                             const char* folder_uri, int kind) {
    char** paths = local_paths(uris, n_uris);
    if (!paths) return NULL;
    char* target = folder_uri   ? g_filename_from_uri(folder_uri, NULL, NULL)
                   : n_uris > 0 ? g_path_get_dirname(paths[0])
                                : NULL;
    if (!target) {
        g_strfreev(paths);
        return NULL;
    }
    pxmenu_menu* menu = pxmenu_menu_build((const char* const*)paths, n_uris, target, kind);
    size_t count = 0;
    const pxmenu_entry* entries = pxmenu_menu_entries(menu, &count);
    Builder builder = {host, menu, 0};
    GList* items = build_level(&builder, entries, count);
    pxmenu_menu_free(menu);
    g_free(target);
    g_strfreev(paths);
    return items;
}

GList* pxmenu_gtk_file_menu_items(const PxmenuHostMenu* host, GList* files, PxmenuUriGetter get_uri,
                                  int kind) {
    guint count = g_list_length(files);
    if (count == 0) return NULL;
    char** uris = g_new0(char*, count + 1);
    guint i = 0;
    for (GList* file = files; file; file = file->next)
        uris[i++] = get_uri(file->data);
    GList* items = pxmenu_gtk_menu_items(host, (const char* const*)uris, count, NULL, kind);
    g_strfreev(uris);
    return items;
}

GList* pxmenu_gtk_folder_menu_items(const PxmenuHostMenu* host, gpointer folder,
                                    PxmenuUriGetter get_uri, int kind) {
    if (!folder) return NULL;
    char* uri = get_uri(folder);
    GList* items = uri ? pxmenu_gtk_menu_items(host, NULL, 0, uri, kind) : NULL;
    g_free(uri);
    return items;
}
