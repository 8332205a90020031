#pragma once

#include "platform/Ui.h"

#include <functional>
#include <memory>
#include <string>

namespace px {

// The model of the small progress window that long jobs share: a bar, one line of text under
// it, a Cancel button and a success mark. The host's Ui draws it (platform::Ui's progress
// calls); this object keeps what the window shows and decides what Cancel does. Used on the
// main queue only, and always held by std::shared_ptr (the delayed close of showSuccess and the
// Ui's cancel callback refer to it).
class ProgressModel : public std::enable_shared_from_this<ProgressModel> {
  public:
    explicit ProgressModel(platform::Ui& ui) : m_ui(ui) {}

    // The last value given to setPercent, 0.0 to 1.0.
    double percent = 0;
    // What Cancel does; cleared once it has run.
    std::function<void()> cancelHandler;

    // Shows the window waiting: "Please Wait Tip", no Cancel button, the bar running without a
    // value.
    void open();
    // Shows the fraction done (0.0 to 1.0) as a bar and as a text like "45.7%", and the Cancel
    // button. The Ui hears of it only while the window is open.
    void setPercent(double percent);
    // Shuts the window.
    void close();
    // Opens the window with the success mark and the text; one second later, on the main
    // queue, closes it and calls `complete` (if any).
    void showSuccess(const std::string& text, std::function<void()> complete = {});
    // The Cancel button: runs the cancel handler once, forgets it and closes the window.
    void onCancel();

    bool isOpen() const { return m_open; }
    bool isCancelShown() const { return m_cancelShown; }
    bool isSuccessShown() const { return m_successShown; }
    // The line of text under the bar.
    const std::string& tipText() const { return m_tip; }

  private:
    platform::Ui& m_ui;
    bool m_open = false;
    bool m_cancelShown = false;
    bool m_successShown = false;
    std::string m_tip;
};

} // namespace px
