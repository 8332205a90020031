#pragma once

#include <functional>
#include <string>

namespace px {

// The shared way to ask for a display name. "OK" with a usable entry (or any entry when a
// name is not required) hands the text, as typed, to `editHandler`; "Cancel" calls
// `cancelHandler`. A required name left blank keeps the window open.
class PXEditNameWinCtl {
  public:
    PXEditNameWinCtl();

    std::function<void(const std::string&)> editHandler;
    std::function<void()> cancelHandler;
    std::string defaultAlias;
    std::string tipLabelString;
    std::string tipPlaceholder;
    bool required = false;

    // Shows the window and returns once it is closed, by "OK" or "Cancel".
    void showWindow();

    // The buttons. onSure answers whether the window closed.
    bool onSure(const std::string& text);
    void onCancel();

  private:
    // The field's first text: the default alias when it is a usable name.
    std::string initialText() const;
};

} // namespace px
