#include "Texts.h"

#include "support/Localization.h"

#include <QDir>
#include <QStringList>
#include <vector>

namespace px::settings {

QString qt(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

std::string utf8(const QString& text) {
    return text.toStdString();
}

QString text(std::string_view key) {
    return qt(localized(key));
}

QString text(std::string_view key, const QStringList& arguments) {
    std::vector<std::string> values;
    for (const auto& argument : arguments)
        values.push_back(utf8(argument));
    return qt(formatLocalizedText(localized(key), values));
}

void setUpIconTheme() {
    QStringList paths = QIcon::themeSearchPaths();
    const QString dataHome =
        qEnvironmentVariable("XDG_DATA_HOME", QDir::homePath() + "/.local/share");
    QStringList folders{dataHome, QDir::homePath()};
    const QString dataDirs = qEnvironmentVariable("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    folders += dataDirs.split(':', Qt::SkipEmptyParts);
    for (const QString& folder : folders) {
        const QString icons = folder + (folder == QDir::homePath() ? "/.icons" : "/icons");
        if (!paths.contains(icons)) paths << icons;
    }
    QIcon::setThemeSearchPaths(paths);
    QIcon::setFallbackThemeName("Adwaita");
    if (QIcon::themeName().isEmpty() || QIcon::themeName() == "hicolor")
        QIcon::setThemeName("Adwaita");
}

QIcon iconFor(const std::string& reference) {
    if (reference.empty()) return {};
    if (reference.front() == '/') return QIcon(qt(reference));
    return QIcon::fromTheme(qt(reference));
}

} // namespace px::settings
