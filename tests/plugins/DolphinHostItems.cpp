// The harness side of Dolphin: the plugin loaded with QPluginLoader and made by its factory,
// as KIO's file-item actions make it, and asked for its actions with file items.
#include "HostHarness.h"

#include <KAbstractFileItemActionPlugin>
#include <KFileItem>
#include <KFileItemListProperties>
#include <KPluginFactory>
#include <QAction>
#include <QApplication>
#include <QIcon>
#include <QMenu>
#include <QPluginLoader>
#include <QUrl>
#include <QWidget>
#include <memory>

namespace px::test {

namespace {

KAbstractFileItemActionPlugin* plugin = nullptr;
QWidget* window = nullptr;

HostItems read(const QList<QAction*>& actions) {
    HostItems result;
    for (QAction* action : actions) {
        HostItem item;
        item.separator = action->isSeparator();
        item.name = action->objectName().toStdString();
        item.label =
            action->text().replace(QStringLiteral("&&"), QStringLiteral("&")).toStdString();
        item.tooltip = action->toolTip().toStdString();
        item.icon = action->icon().name().toStdString();
        item.sensitive = action->isEnabled();
        item.activate = [action] { action->trigger(); };
        if (action->menu()) item.children = read(action->menu()->actions());
        result.push_back(std::move(item));
    }
    return result;
}

QUrl urlOf(const std::string& uri) {
    return QUrl(QString::fromStdString(uri));
}

} // namespace

const bool kHostHasToolbar = false;

bool loadHostPlugin(const std::string& path) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "test_plugin_dolphin";
    static char* argv[] = {name, nullptr};
    // Left to the end of the process: Qt's and KDE's own exit handlers still use it.
    static auto* application = new QApplication(argc, argv);
    QIcon::setThemeSearchPaths({QStringLiteral("/usr/share/icons")});
    QIcon::setThemeName(QStringLiteral("Adwaita"));
    window = new QWidget;
    QPluginLoader loader(QString::fromStdString(path));
    auto* factory = qobject_cast<KPluginFactory*>(loader.instance());
    if (!factory) return false;
    plugin = factory->create<KAbstractFileItemActionPlugin>(application);
    return plugin != nullptr;
}

HostItems hostFileItems(const std::vector<std::string>& uris) {
    KFileItemList items;
    for (const auto& uri : uris)
        items.append(KFileItem(urlOf(uri)));
    return read(plugin->actions(KFileItemListProperties(items), window));
}

// Dolphin's background menu: the folder shown as the only item, in a window titled after it.
HostItems hostFolderItems(const std::string& uri, int kind) {
    if (kind != 1) return {};
    KFileItem folder(urlOf(uri));
    window->setWindowTitle(urlOf(uri).fileName() + QStringLiteral(" \u2014 Dolphin"));
    HostItems result = read(plugin->actions(KFileItemListProperties({folder}), window));
    window->setWindowTitle({});
    return result;
}

} // namespace px::test
