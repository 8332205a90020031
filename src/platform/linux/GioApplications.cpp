#include "platform/linux/GioApplications.h"

#include "support/FileIO.h"
#include "support/GlibOwners.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <fcntl.h>
#include <fmt/format.h>
#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>
#include <memory>

namespace px::platform {

namespace {

using AppPtr = glib::Object<GAppInfo>;

// The GFile list GIO launches with; owns its files.
class FileList {
  public:
    explicit FileList(const std::vector<std::string>& paths) {
        for (auto it = paths.rbegin(); it != paths.rend(); ++it)
            m_list = g_list_prepend(m_list, g_file_new_for_path(it->c_str()));
    }
    ~FileList() { g_list_free_full(m_list, g_object_unref); }
    FileList(const FileList&) = delete;
    FileList& operator=(const FileList&) = delete;
    GList* get() const { return m_list; }

  private:
    GList* m_list = nullptr;
};

// The files' URIs, as the desktop-entry launcher takes them; owns its strings.
class UriList {
  public:
    explicit UriList(GList* files) {
        for (GList* node = g_list_last(files); node; node = node->prev)
            m_list = g_list_prepend(m_list, g_file_get_uri(G_FILE(node->data)));
    }
    ~UriList() { g_list_free_full(m_list, g_free); }
    UriList(const UriList&) = delete;
    UriList& operator=(const UriList&) = delete;
    GList* get() const { return m_list; }

  private:
    GList* m_list = nullptr;
};

AppPtr byExactName(const std::string& appName) {
    GList* all = g_app_info_get_all();
    AppPtr found;
    for (GList* node = all; node && !found; node = node->next) {
        auto* info = G_APP_INFO(node->data);
        const char* name = g_app_info_get_name(info);
        if (name && appName == name) found.reset(G_APP_INFO(g_object_ref(info)));
    }
    g_list_free_full(all, g_object_unref);
    return found;
}

AppPtr byDesktopId(const std::string& appName) {
    for (const auto& id : desktopIdCandidates(appName))
        if (GDesktopAppInfo* info = g_desktop_app_info_new(id.c_str()))
            return AppPtr(G_APP_INFO(info));
    return nullptr;
}

AppPtr bySearch(const std::string& appName) {
    gchar*** groups = g_desktop_app_info_search(appName.c_str());
    AppPtr found;
    for (gchar*** group = groups; group && *group; ++group) {
        for (gchar** id = *group; *id && !found; ++id)
            if (GDesktopAppInfo* info = g_desktop_app_info_new(*id)) found.reset(G_APP_INFO(info));
        g_strfreev(*group);
    }
    g_free(groups);
    return found;
}

// Starts the application with the files. A desktop entry's program gets /dev/null for its input
// and output, so that a long-lived application never holds on to this process's output streams.
bool launch(GAppInfo* app, const std::vector<std::string>& paths, GError** error) {
    FileList files(paths);
    if (!G_IS_DESKTOP_APP_INFO(app)) return g_app_info_launch(app, files.get(), nullptr, error);
    io::FileDescriptor null(::open("/dev/null", O_RDWR | O_CLOEXEC));
    if (!null.valid()) return g_app_info_launch(app, files.get(), nullptr, error);
    UriList uris(files.get());
    return g_desktop_app_info_launch_uris_as_manager_with_fds(
        G_DESKTOP_APP_INFO(app), uris.get(), nullptr, G_SPAWN_SEARCH_PATH, nullptr, nullptr,
        nullptr, nullptr, null.get(), null.get(), null.get(), error);
}

AppPtr findApplication(const std::string& appName) {
    if (auto app = byExactName(appName)) return app;
    if (auto app = byDesktopId(appName)) return app;
    return bySearch(appName);
}

std::string lowerCased(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

std::string replacedBlanks(const std::string& text, const std::string& by) {
    std::string result;
    for (char c : text)
        result += c == ' ' ? by : std::string(1, c);
    return result;
}

} // namespace

std::vector<std::string> desktopIdCandidates(std::string_view appName) {
    std::string name(appName);
    if (name.find_first_not_of(' ') == std::string::npos || name.find('/') != std::string::npos)
        return {};
    std::vector<std::string> ids;
    for (const auto& stem : {name, lowerCased(name), replacedBlanks(lowerCased(name), ""),
                             replacedBlanks(lowerCased(name), "-")}) {
        std::string id = stem + ".desktop";
        if (std::find(ids.begin(), ids.end(), id) == ids.end()) ids.push_back(id);
    }
    return ids;
}

bool GioApplications::openWithApplication(const std::string& appName,
                                          const std::vector<std::string>& paths) {
    AppPtr app = findApplication(appName);
    if (!app) {
        fmt::print(stderr, "pxmenu: no installed application is called \"{}\"\n", appName);
        return false;
    }
    glib::ErrorSlot error;
    bool launched = launch(app.get(), paths, error.out());
    if (!launched)
        fmt::print(stderr, "pxmenu: cannot start \"{}\": {}\n", appName, error.message());
    return launched;
}

bool GioApplications::launchDesktopEntry(const std::string& desktopId) {
    glib::Object<GDesktopAppInfo> info(g_desktop_app_info_new(desktopId.c_str()));
    if (!info) return false;
    glib::ErrorSlot error;
    if (g_app_info_launch(G_APP_INFO(info.get()), nullptr, nullptr, error.out())) return true;
    fmt::print(stderr, "pxmenu: cannot start {}: {}\n", desktopId, error.message());
    return false;
}

} // namespace px::platform
