#include "platform/linux/DesktopApplications.h"

#include <algorithm>
#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>
#include <strings.h>

namespace px::platform {

namespace {

std::vector<std::string> iconNames(GAppInfo* info) {
    GIcon* icon = g_app_info_get_icon(info);
    if (!icon) return {};
    if (G_IS_THEMED_ICON(icon)) {
        std::vector<std::string> names;
        for (const gchar* const* name = g_themed_icon_get_names(G_THEMED_ICON(icon)); name && *name;
             ++name)
            names.emplace_back(*name);
        return names;
    }
    if (G_IS_FILE_ICON(icon)) {
        gchar* path = g_file_get_path(g_file_icon_get_file(G_FILE_ICON(icon)));
        std::vector<std::string> file;
        if (path) file.emplace_back(path);
        g_free(path);
        return file;
    }
    return {};
}

DesktopApplication describe(GAppInfo* info) {
    const char* id = g_app_info_get_id(info);
    const char* comment = g_app_info_get_description(info);
    return {g_app_info_get_name(info), id ? id : "", comment ? comment : "", iconNames(info)};
}

} // namespace

std::vector<DesktopApplication> desktopApplications() {
    std::vector<DesktopApplication> found;
    GList* all = g_app_info_get_all();
    for (GList* node = all; node; node = node->next) {
        auto* info = G_APP_INFO(node->data);
        if (g_app_info_should_show(info) && g_app_info_get_name(info))
            found.push_back(describe(info));
    }
    g_list_free_full(all, g_object_unref);
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
        int order = ::strcasecmp(a.name.c_str(), b.name.c_str());
        return order != 0 ? order < 0 : a.id < b.id;
    });
    found.erase(std::unique(found.begin(), found.end(),
                            [](const auto& a, const auto& b) { return a.name == b.name; }),
                found.end());
    return found;
}

} // namespace px::platform
