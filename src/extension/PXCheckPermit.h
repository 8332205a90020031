#pragma once

#include "config/PXURLCache.h"
#include "platform/Ui.h"

#include <functional>
#include <optional>
#include <string>

namespace px {

// Whether an action may touch a path, and the prompts that obtain a grant when it may not.
// Called on the main queue; the prompts are modal.
//
// This build runs without a sandbox, so besides the grants kept by PXURLCache the process's
// own permissions count:
// - the silent check also passes for a path the process may read and list;
// - the action check also passes for a writable path, and where it still fails it does not
//   open a folder chooser straight away but first explains the problem with the access
//   guidance (accessPrivacy), from which the user can go on to grant a folder.
class PXCheckPermit {
  public:
    PXCheckPermit(platform::Ui& ui, PXURLCache& cache) : m_ui(ui), m_cache(cache) {}

    // No prompt. True when a grant covers the path, or when the process may use it itself: a
    // folder it may read and list, another item it may read. False for a blank path.
    bool checkPermitWithPath(const std::string& path);

    // Runs `success` when a grant covers the path or the path is writable. Otherwise shows the
    // access guidance and runs `success` once the user has chosen a folder to grant (saved as
    // a grant whether or not it covers the path), `failure` when the user declines. A blank
    // path runs neither.
    void checkPermitWithPath(const std::string& path, const std::function<void()>& success,
                             const std::function<void()>& failure);

    // An open panel for one folder, with `prompt` as its confirm button. The chosen path, or
    // nothing when cancelled; the choice is not saved.
    std::optional<std::string> selectFolderWithPrompt(const std::string& prompt);

    // The access guidance for a path the platform refused: an alert ("Tip") naming the item and
    // its permissions, with "Authorization" and "Cancel". "Authorization" opens the folder
    // chooser of authorize(); true when the user granted a folder there.
    bool accessPrivacy(const std::string& path);

    // The folder chooser that grants access: it starts in the home folder for a path inside it,
    // else at "/" with the "Auth Root Tip" message. A chosen folder is saved as a grant; true
    // when the user chose one.
    bool authorize(const std::string& path);

  private:
    bool startAccessingGrantFor(const std::string& path);

    platform::Ui& m_ui;
    PXURLCache& m_cache;
};

} // namespace px
