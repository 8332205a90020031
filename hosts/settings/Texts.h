#pragma once

#include <QIcon>
#include <QString>
#include <string>
#include <string_view>

namespace px::settings {

// The product's text for a catalogue key, in the user's language.
QString text(std::string_view key);
// The text for a key with its placeholders ("%@") filled in order.
QString text(std::string_view key, const QStringList& arguments);

QString qt(const std::string& utf8);
std::string utf8(const QString& text);

// Makes icon-theme names resolve where the platform plugin knows no icon folders (offscreen,
// a bare X server): the XDG icon folders are searched, and "Adwaita" stands in for a desktop
// theme that is unset or the bare "hicolor".
void setUpIconTheme();

// The image an icon reference names: an image file (a leading "/") or an icon-theme name.
QIcon iconFor(const std::string& reference);

} // namespace px::settings
