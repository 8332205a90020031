/* The menu service for plugins written in C. Every function traps all failures: none raises,
 * none aborts; a failure gives an empty menu or a non-zero status. */
#ifndef PXMENU_SERVICE_H
#define PXMENU_SERVICE_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct pxmenu_entry {
    const char* label;   /* valid UTF-8; unique among the submenus of the menu */
    const char* icon;    /* icon-theme name or absolute image path; "" for none */
    const char* tooltip; /* never empty */
    int64_t tag;
    int separator;
    int enabled;
    const struct pxmenu_entry* children;
    size_t child_count;
} pxmenu_entry;

typedef struct pxmenu_menu pxmenu_menu;

/* Once, when the file manager loads the plugin. */
void pxmenu_host_loaded(void);

/* The menu for a request: `paths` are absolute local paths, `target` the folder shown, `kind`
 * 0 items, 1 background, 2 side pane, 3 toolbar. Never NULL; free with pxmenu_menu_free. The
 * menu shares one copy of the request with the activations taken from it. */
pxmenu_menu* pxmenu_menu_build(const char* const* paths, size_t path_count, const char* target,
                               int kind);
const pxmenu_entry* pxmenu_menu_entries(const pxmenu_menu* menu, size_t* count);
void pxmenu_menu_free(pxmenu_menu* menu);

/* What choosing an entry of the menu runs; it stays valid after the menu is freed. */
typedef struct pxmenu_activation pxmenu_activation;
pxmenu_activation* pxmenu_activation_new(const pxmenu_menu* menu, const pxmenu_entry* entry);
/* Starts the command detached and returns at once; 0 when it was started. */
int pxmenu_activation_run(const pxmenu_activation* activation);
void pxmenu_activation_free(pxmenu_activation* activation);

#ifdef __cplusplus
}
#endif

#endif
