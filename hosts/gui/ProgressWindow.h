#pragma once

#include "platform/Ui.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QWidget>
#include <functional>

namespace px::gui {

// The small progress window of long jobs: a bar (running without a value while waiting), the
// line under it ("45.7%"), Cancel when the job can stop, and the success picture at the end.
// Cancel (click, Return or Escape) calls the cancel handler on the main queue.
class ProgressWindow final : public QWidget {
    Q_OBJECT
  public:
    ProgressWindow();

    void open(std::function<void()> onCancel);
    void show(const platform::Ui::Progress& progress);
    void close();
    QPushButton& cancelButton() { return *m_cancel; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void cancel();

    QLabel* m_picture;
    QProgressBar* m_bar;
    QLabel* m_text;
    QPushButton* m_cancel;
    std::function<void()> m_onCancel;
};

} // namespace px::gui
