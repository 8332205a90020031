#pragma once

#include "platform/Ui.h"

#include <functional>
#include <string>
#include <vector>

namespace px {

// The dialog that asks for the name of the folder to embed items in and how to sort them.
// "OK" with a usable name hands (name, mode) to `handler`; "Cancel" hands ("", 0). The handler
// is called once per opening. A blank name keeps the window open.
//
// The owner keeps the prompt alive while `open` runs: the handler may release the owner's
// reference (the extension's `clean`).
class EmbedFolderPrompt {
  public:
    // Sorting modes, in the order of the mode pop-up (the tags of its items).
    enum Mode { NotClassified = 0, ByExtension = 1 };

    explicit EmbedFolderPrompt(platform::Ui& ui);

    std::function<void(const std::string& name, int mode)> handler;
    // The name field's text; "Untitled" at first, then what was typed last.
    std::string foldIntoInput;

    // The mode pop-up's titles, in tag order.
    static std::vector<std::string> modeTitles();
    // A name a folder can be made with: not blank, not "(null)", no "/", not "." or "..".
    static bool isUsableName(const std::string& name);

    // Shows the dialog and returns once it has ended by "OK" or "Cancel".
    void open();
    void close();

    // The buttons. onSure answers whether the dialog ended.
    bool onSure(const std::string& name, int mode);
    void onCancel();

  private:
    platform::Ui& m_ui;
    void finish(const std::string& name, int mode);

    bool m_open = false;
};

} // namespace px
