#include "harness-host.h"

#include <gmodule.h>

G_DEFINE_TYPE(HarnessModule, harness_module, G_TYPE_TYPE_MODULE)

static gpointer symbol(HarnessModule* self, const char* suffix) {
    char* name = g_strconcat(self->prefix, suffix, NULL);
    gpointer address = NULL;
    if (!g_module_symbol(self->library, name, &address)) address = NULL;
    g_free(name);
    return address;
}

GType harness_module_type(void) {
    return harness_module_get_type();
}

static gboolean harness_module_load(GTypeModule* module) {
    HarnessModule* self = (HarnessModule*)module;
    if (!self->library) {
        self->library = g_module_open(self->path, G_MODULE_BIND_LAZY | G_MODULE_BIND_LOCAL);
        if (!self->library) {
            g_printerr("cannot load %s: %s\n", self->path, g_module_error());
            return FALSE;
        }
        g_module_make_resident(self->library);
    }
    void (*initialize)(GTypeModule*) = symbol(self, "_initialize");
    if (!initialize) return FALSE;
    initialize(module);
    return TRUE;
}

static void harness_module_unload(GTypeModule* module) {
    (void)module;
}

static void harness_module_init(HarnessModule* self) {
    (void)self;
}

static void harness_module_class_init(HarnessModuleClass* klass) {
    G_TYPE_MODULE_CLASS(klass)->load = harness_module_load;
    G_TYPE_MODULE_CLASS(klass)->unload = harness_module_unload;
}

GTypeModule* harness_type_module_new(GType type, const char* path, const char* prefix) {
    HarnessModule* self = g_object_new(type, NULL);
    self->path = g_strdup(path);
    self->prefix = g_strdup(prefix);
    if (!g_type_module_use(G_TYPE_MODULE(self))) return NULL;
    return G_TYPE_MODULE(self);
}

void harness_type_module_types(GTypeModule* module, const GType** types, int* count) {
    void (*list)(const GType**, int*) = symbol((HarnessModule*)module, "_list_types");
    *types = NULL;
    *count = 0;
    if (list) list(types, count);
}

GObject* harness_new_provider(const GType* types, int count, GType interface_type) {
    for (int i = 0; i < count; ++i)
        if (g_type_is_a(types[i], interface_type)) return g_object_new(types[i], NULL);
    return NULL;
}

typedef struct {
    GObject parent;
    char* uri;
} HarnessFile;

typedef struct {
    GObjectClass parent;
} HarnessFileClass;

G_DEFINE_TYPE(HarnessFile, harness_file, G_TYPE_OBJECT)

static void harness_file_finalize(GObject* object) {
    g_free(((HarnessFile*)object)->uri);
    G_OBJECT_CLASS(harness_file_parent_class)->finalize(object);
}

static void harness_file_init(HarnessFile* self) {
    (void)self;
}

static void harness_file_class_init(HarnessFileClass* klass) {
    G_OBJECT_CLASS(klass)->finalize = harness_file_finalize;
}

void harness_file_implement(GType interface_type, GInterfaceInitFunc init) {
    const GInterfaceInfo info = {init, NULL, NULL};
    g_type_add_interface_static(harness_file_get_type(), interface_type, &info);
}

GObject* harness_file_new(const char* uri) {
    HarnessFile* file = g_object_new(harness_file_get_type(), NULL);
    file->uri = g_strdup(uri);
    return G_OBJECT(file);
}

char* harness_file_uri(gpointer file) {
    return g_strdup(((HarnessFile*)file)->uri);
}
