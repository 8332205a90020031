// The pxmenu entries in Dolphin's context menus: selected items (kind 0) and the folder
// background (kind 1).
#include "extension/MenuActivation.h"
#include "extension/MenuService.h"
#include "platform/linux/UserStore.h"

#include <KAbstractFileItemActionPlugin>
#include <KFileItem>
#include <KFileItemListProperties>
#include <KPluginFactory>
#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QWidget>
#include <cstdio>
#include <exception>
#include <memory>

namespace {

// The path's bytes as the URL carries them: a name that is not UTF-8 stays as it is on disk.
std::string localPath(const QUrl& url) {
    return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()).toStdString();
}

// Dolphin asks with the folder shown as the only item for its background menu; its window is
// titled after that folder.
bool isBackground(const KFileItemList& items, QWidget* parent) {
    if (items.size() != 1 || !items.front().isDir() || !parent) return false;
    QString title = parent->window()->windowTitle();
    QString name = items.front().url().fileName();
    return !name.isEmpty() && (title == name || title.startsWith(name + QStringLiteral(" \u2014")));
}

// Qt reads "&" in a label as the mark of a mnemonic.
QString labelText(const std::string& label) {
    return QString::fromStdString(label).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

// A theme icon, or its symbolic variant where the theme has only that (GNOME's theme).
QIcon iconFor(const std::string& icon) {
    QString name = QString::fromStdString(icon);
    if (name.startsWith(QLatin1Char('/'))) return QIcon(name);
    return QIcon::fromTheme(name, QIcon::fromTheme(name + QStringLiteral("-symbolic")));
}

class MenuBuilder {
  public:
    MenuBuilder(std::shared_ptr<const px::MenuRequest> request, QWidget* parent)
        : m_request(std::move(request)), m_parent(parent) {}

    QList<QAction*> actions(const px::ServiceMenu& menu) {
        QList<QAction*> result;
        for (const auto& entry : menu)
            result.append(action(entry));
        return result;
    }

  private:
    QAction* action(const px::ServiceEntry& entry) {
        auto* action = new QAction(labelText(entry.label), m_parent);
        action->setObjectName(QStringLiteral("pxmenu::%1").arg(entry.tag));
        action->setToolTip(QString::fromStdString(entry.tooltip));
        if (entry.separator) {
            action->setSeparator(true);
            return action;
        }
        if (!entry.icon.empty()) action->setIcon(iconFor(entry.icon));
        action->setEnabled(entry.enabled);
        if (!entry.children.empty()) {
            auto* submenu = new QMenu(m_parent);
            for (const auto& child : entry.children) {
                if (child.separator && !child.label.empty())
                    submenu->addSection(labelText(child.label));
                else
                    submenu->addAction(this->action(child));
            }
            action->setMenu(submenu);
            return action;
        }
        QObject::connect(action, &QAction::triggered,
                         [request = m_request, tag = entry.tag, keyPath = entry.keyPath] {
                             try {
                                 auto started = px::activate(*request, tag, keyPath);
                                 if (started.isError())
                                     std::fprintf(stderr, "pxmenu plugin: %s\n",
                                                  started.error().message.c_str());
                             } catch (const std::exception& error) {
                                 std::fprintf(stderr, "pxmenu plugin: %s\n", error.what());
                             } catch (...) {
                             }
                         });
        return action;
    }

    std::shared_ptr<const px::MenuRequest> m_request;
    QWidget* m_parent;
};

} // namespace

class PxmenuDolphinPlugin : public KAbstractFileItemActionPlugin {
    Q_OBJECT
  public:
    PxmenuDolphinPlugin(QObject* parent, const QVariantList&)
        : KAbstractFileItemActionPlugin(parent) {
        m_service.hostLoaded();
    }

    QList<QAction*> actions(const KFileItemListProperties& properties, QWidget* parent) override {
        try {
            return build(properties, parent);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "pxmenu plugin: %s\n", error.what());
        } catch (...) {
        }
        return {};
    }

  private:
    QList<QAction*> build(const KFileItemListProperties& properties, QWidget* parent) {
        const KFileItemList items = properties.items();
        auto request = std::make_shared<px::MenuRequest>();
        for (const auto& item : items) {
            if (!item.url().isLocalFile()) return {};
            request->paths.push_back(localPath(item.url()));
        }
        if (request->paths.empty()) return {};
        if (isBackground(items, parent)) {
            request->kind = 1;
            request->target = request->paths.front();
            request->paths.clear();
        } else {
            request->target = localPath(
                items.front().url().adjusted(QUrl::RemoveFilename | QUrl::StripTrailingSlash));
        }
        px::ServiceMenu menu = m_service.menu(*request);
        return MenuBuilder(std::move(request), parent).actions(menu);
    }

    px::MenuService m_service{px::platform::openUserStore};
};

K_PLUGIN_CLASS_WITH_JSON(PxmenuDolphinPlugin, "pxmenu-dolphin.json")

#include "PxmenuDolphinPlugin.moc"
