/* What a plugin test needs from one host: its plugin loaded as the host loads it, fake file
 * objects handed to its menu provider, and its menu items read back. */
#ifndef PXMENU_HARNESS_HOST_H
#define PXMENU_HARNESS_HOST_H

#include <glib-object.h>

G_BEGIN_DECLS

/* Loads the plugin file the way the host does; FALSE when it cannot be loaded. */
gboolean harness_load(const char* plugin_path);
/* The provider's items for selected files and for a folder (kind 1, or 3 for a tool bar); a
 * new list of new references. */
GList* harness_file_items(const char* const* uris, guint count);
GList* harness_folder_items(const char* uri, int kind);
/* The items of an item's submenu (new references), NULL when it has none. */
GList* harness_submenu_items(GObject* item);
gboolean harness_is_separator(GObject* item);
void harness_activate(GObject* item);
/* The name of the items' tooltip property, and whether the host has a tool bar menu. */
extern const char* const harness_tooltip_property;
extern const gboolean harness_has_toolbar;

/* For the hosts that load plugins as GTypeModules: a module (of `type`, a HarnessModule or a
 * subclass) that opens the file and calls PREFIX_initialize; its list of types from
 * PREFIX_list_types. */
typedef struct {
    GTypeModule parent;
    char* path;
    char* prefix;
    gpointer library;
} HarnessModule;

typedef struct {
    GTypeModuleClass parent;
} HarnessModuleClass;

GType harness_module_type(void);
GTypeModule* harness_type_module_new(GType type, const char* path, const char* prefix);
void harness_type_module_types(GTypeModule* module, const GType** types, int* count);
/* The first of the module's types that implements the interface, as a new instance. */
GObject* harness_new_provider(const GType* types, int count, GType interface_type);

/* File objects that only know their URI, implementing the host's file-info interface (added
 * once, by `init`, before the first file is made). */
void harness_file_implement(GType interface_type, GInterfaceInitFunc init);
GObject* harness_file_new(const char* uri);
char* harness_file_uri(gpointer file);

G_END_DECLS

#endif
