#include "platform/linux/GioWorkspace.h"

#include "support/GlibOwners.h"
#include "support/Queues.h"

#include <gio/gio.h>
#include <thread>

namespace px::platform {

namespace {

template <typename T> using GObjectPtr = glib::Object<T>;

std::string fileUri(const std::string& path) {
    GObjectPtr<GFile> file(g_file_new_for_path(path.c_str()));
    gchar* uri = g_file_get_uri(file.get());
    std::string text = uri ? uri : "";
    g_free(uri);
    return text;
}

std::string mountRoot(GMount* mount) {
    GObjectPtr<GFile> root(g_mount_get_root(mount));
    gchar* path = root ? g_file_get_path(root.get()) : nullptr;
    std::string text = path ? path : "";
    g_free(path);
    return text;
}

// Asks the file manager over the session bus to show and select the item; bounded wait.
bool showItemsOverDBus(const std::string& path) {
    GError* error = nullptr;
    GObjectPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &error));
    glib::Error ownedError(error);
    if (!bus) return false;
    std::string uri = fileUri(path);
    const gchar* uris[] = {uri.c_str(), nullptr};
    GVariant* reply = g_dbus_connection_call_sync(
        bus.get(), "org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
        "org.freedesktop.FileManager1", "ShowItems", g_variant_new("(^ass)", uris, ""), nullptr,
        G_DBUS_CALL_FLAGS_NONE, 2000, nullptr, nullptr);
    if (reply) g_variant_unref(reply);
    return reply != nullptr;
}

} // namespace

class GioWorkspace::MountWatcher {
  public:
    explicit MountWatcher(std::function<void()> onMount) : m_onMount(std::move(onMount)) {
        m_context = g_main_context_new();
        m_loop = g_main_loop_new(m_context, FALSE);
        m_thread = std::thread([this] { run(); });
    }
    ~MountWatcher() {
        g_main_loop_quit(m_loop);
        if (m_thread.joinable()) m_thread.join();
        g_main_loop_unref(m_loop);
        g_main_context_unref(m_context);
    }

  private:
    static void mountAdded(GVolumeMonitor*, GMount*, gpointer self) {
        auto* watcher = static_cast<MountWatcher*>(self);
        queue::enterForeground(watcher->m_onMount);
    }
    void run() {
        g_main_context_push_thread_default(m_context);
        GObjectPtr<GVolumeMonitor> monitor(g_volume_monitor_get());
        gulong handler =
            g_signal_connect(monitor.get(), "mount-added", G_CALLBACK(mountAdded), this);
        g_main_loop_run(m_loop);
        g_signal_handler_disconnect(monitor.get(), handler);
        monitor.reset();
        g_main_context_pop_thread_default(m_context);
    }

    std::function<void()> m_onMount;
    GMainContext* m_context = nullptr;
    GMainLoop* m_loop = nullptr;
    std::thread m_thread;
};

GioWorkspace::GioWorkspace() = default;
GioWorkspace::~GioWorkspace() = default;

bool GioWorkspace::openURL(const std::string& url) {
    return g_app_info_launch_default_for_uri(url.c_str(), nullptr, nullptr);
}

bool GioWorkspace::revealInFileManager(const std::string& path) {
    if (showItemsOverDBus(path)) return true;
    auto slash = path.rfind('/');
    std::string folder = slash == std::string::npos || slash == 0 ? "/" : path.substr(0, slash);
    return openURL(fileUri(folder));
}

std::vector<std::string> GioWorkspace::mountedVolumes() {
    GObjectPtr<GVolumeMonitor> monitor(g_volume_monitor_get());
    GList* mounts = g_volume_monitor_get_mounts(monitor.get());
    std::vector<std::string> roots;
    for (GList* node = mounts; node; node = node->next) {
        auto* mount = G_MOUNT(node->data);
        std::string root = mountRoot(mount);
        if (!g_mount_is_shadowed(mount) && !root.empty() && root.find("/.") == std::string::npos)
            roots.push_back(root);
    }
    g_list_free_full(mounts, g_object_unref);
    return roots;
}

void GioWorkspace::observeMounts(std::function<void()> onMount) {
    m_watcher.reset();
    if (onMount) m_watcher = std::make_unique<MountWatcher>(std::move(onMount));
}

} // namespace px::platform
