#pragma once

#include <QWidget>

namespace px::gui {

// When $PXMENU_SCREENSHOT_DIR is set, saves what the X server shows of the window as
// <dir>/<pid>-<NN>-<kind>.png once it is mapped (for looking at every window after a test run).
void saveWindowShot(QWidget& window, const char* kind);

} // namespace px::gui
