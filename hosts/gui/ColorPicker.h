#pragma once

#include "QueuePump.h"
#include "platform/Ui.h"

#include <QWidget>
#include <optional>

namespace px::gui {

// Picks a colour from the screen: through the desktop portal's Screenshot.PickColor when a
// portal answers; otherwise, on X11, with the own magnifier window (80x80, seven times
// enlarged, the picked pixel framed in 233/87/71; click picks, Escape cancels); on Wayland
// without a portal one alert says that no colour can be picked. "Screen Record Tip" is shown
// before the first pick while the preference asks for it.
class ColorPicker {
  public:
    std::optional<platform::Ui::Color> pick();
    bool isPicking() const { return m_picking; }

  private:
    std::optional<platform::Ui::Color> pickWithMagnifier();

    bool m_picking = false;
};

// The magnifier window.
class Magnifier final : public QWidget {
    Q_OBJECT
  public:
    Magnifier();
    // Runs until a click or Escape.
    std::optional<QColor> run();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void follow();

    QImage m_area;
    std::optional<QColor> m_result;
    bool m_done = false;
};

// Asks the portal; none when no portal answers or the user cancelled. `answered` tells the two
// apart.
std::optional<platform::Ui::Color> portalPickColor(bool& answered);

} // namespace px::gui
