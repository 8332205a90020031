#include "Texts.h"

#include "config/Localization.h"

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

QIcon iconFor(const std::string& reference) {
    if (reference.empty()) return {};
    if (reference.front() == '/') return QIcon(qt(reference));
    return QIcon::fromTheme(qt(reference));
}

} // namespace px::settings
