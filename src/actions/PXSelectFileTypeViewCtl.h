#pragma once

#include "config/PXMenuItem.h"
#include "config/PXMenuManager.h"
#include "platform/PromptSupport.h"
#include "platform/Ui.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace px {

// The file-type chooser of the "New File From Window" save panel: a pop-up of the file
// templates (all of them, switched-off ones included), each tagged with its index in
// `fileArray`. Every choice sets `currentItem` and is reported to `selectHandler`.
class PXSelectFileTypeViewCtl {
  public:
    using Entry = platform::FileTypeEntry;

    explicit PXSelectFileTypeViewCtl(const PXMenuManager& store);

    std::function<void(const PXMenuItem::Ptr&)> selectHandler;
    PXMenuItem::Ptr currentItem;
    PXMenuItem::List fileArray;

    // "File Type:" in the user's language.
    static std::string tipLabel();
    // The pop-up's entries; without icons when "pref check4" is on.
    std::vector<Entry> entries() const;

    // Loading the view: builds the pop-up and reports its first entry (none when it is empty).
    void loadView();
    // The pop-up's action with the tag of the chosen entry, or none.
    void onSelectItem(std::optional<std::size_t> tag);
    void selectItem(const PXMenuItem::Ptr& item);

    // Puts the chooser into a save panel request. The panel shows the view: it reports the
    // first entry at once and every later choice. The controller must outlive the panel.
    void attachTo(platform::Ui::SaveRequest& request);

  private:
    bool m_withIcons;
};

} // namespace px
