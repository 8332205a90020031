#pragma once

#include "actions/PXFile.h"
#include "config/PXMenuItem.h"
#include "extension/MenuEntry.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace px {

class PXCompress;
class PXEmbedFolderWinCtl;
class PXLoadingWinCtl;

// Menu kinds a file manager asks for.
enum class MenuKind { ContextualItems = 0, ContextualContainer = 1, Sidebar = 2, Toolbar = 3 };

// The extension's principal object: it answers menu requests for the current selection, turns a
// chosen tag back into its configured item and runs that item's action. One instance per
// process, used on the main queue. The actions are virtual so that hosts and tests can stand
// in for them.
class FinderSync {
  public:
    struct Options {
        // A file-manager session clears the cut list when it starts; the command line and the
        // extension process start many times per session and leave it alone.
        bool clearCutList = false;
        // The review prompt after some uses; the command line's terminal mode, where a person
        // is working, goes without it.
        bool showReviewPrompt = true;
    };

    FinderSync();
    explicit FinderSync(Options options);
    virtual ~FinderSync();
    FinderSync(const FinderSync&) = delete;
    FinderSync& operator=(const FinderSync&) = delete;

    // --- Start-up and selection ---------------------------------------------------------
    void setupDirectoryURLs();
    void volumeChangeNoti();
    std::string targetURL() const;
    const std::vector<std::string>& selectURLs();
    std::vector<std::string> selectPaths();
    bool isSelectSingleURL();
    std::string toolbarItemName() const;
    std::string toolbarItemToolTip() const;
    std::string toolbarItemImage() const;

    // --- Menu ---------------------------------------------------------------------------
    Menu menuForMenuKind(MenuKind kind);
    std::optional<Menu> getSubMenuWithChildren(const std::optional<PXMenuItem::List>& children,
                                               const std::string& parentTag);

    // --- Dispatch -----------------------------------------------------------------------
    void onMenuItemAction(std::int64_t tag);
    void readyStart(const PXMenuItem::Ptr& item, std::vector<std::string> indexes);
    void _useSuccess(const PXMenuItem::Ptr& item);
    virtual void goSet();
    virtual void goReview();
    virtual void clean();

    // Brackets a background job: counts it and opens the progress window now; the returned
    // function, called on the main queue when the job is over, uncounts it and cleans at zero.
    void beginLoading();
    void endLoading();
    // The progress window, made on first use; clean() closes and drops it.
    PXLoadingWinCtl& loadingWinCtl();

    // Name-based notifications: the object observes a name once; `handleSignal` receives it.
    void addNotification(const std::string& name);
    void removeNotification(const std::string& name);
    virtual void handleSignal(const std::string& name);

    // --- Actions ------------------------------------------------------------------------
    virtual void createFileWithItem(const PXMenuItem::Ptr& item);
    virtual void openCommonPath(const std::string& path, const PXMenuItem::Ptr& item);
    virtual void openWithApp(const PXMenuItem::Ptr& item, const std::optional<std::string>& path);
    virtual void setFolderIcon(const PXMenuItem::Ptr& item);
    virtual void convertItem(const PXMenuItem::Ptr& item, const PXMenuItem::Ptr& parentItem);
    virtual void copyfileInfo(const PXMenuItem::Ptr& item);
    virtual void moveAndCopyItem(const PXMenuItem::Ptr& item, bool isCopy);
    virtual void openServe(const std::string& serve, const std::optional<std::string>& path);
    virtual void deletePath();
    virtual void copyPath();
    virtual void showSystemFiles(const PXMenuItem::Ptr& item);
    virtual void hideAndShowFiles(const PXMenuItem::Ptr& item);
    virtual void lockUnlockFiles(const PXMenuItem::Ptr& item);
    virtual void cutPasteItem(const PXMenuItem::Ptr& item);
    virtual void encryptedCompress(const PXMenuItem::Ptr& item);
    virtual void embedFolder();
    virtual void unembedFolder();
    virtual void startColorPicker();
    virtual void executeScript();
    virtual void extractIcon();

    // --- State --------------------------------------------------------------------------
    std::optional<PXMenuItem::List> rightMenuArray;
    std::optional<std::vector<std::string>> selectURLsCache;
    bool isSelectURL = false;
    std::int64_t loadingCount = 0;
    // The running compression job; set while one runs (one at a time).
    std::shared_ptr<PXCompress> compress;
    // The open embed dialog, kept until clean().
    std::shared_ptr<PXEmbedFolderWinCtl> embedFolderWinCtl;

  private:
    bool isFilteredOut(const PXMenuItem& item, const PXFile& current, std::size_t count);
    MenuEntry makeEntry(const PXMenuItem::Ptr& item, std::size_t index, const PXFile& current,
                        std::size_t count);
    void fillChildren(const PXMenuItem::Ptr& item, const PXFile& current, std::size_t count);
    void routeWithChildren(const PXMenuItem::Ptr& item, std::vector<std::string>& indexes);
    void routeWithoutChildren(const PXMenuItem::Ptr& item);
    void routeChild(const PXMenuItem::Ptr& item, const PXMenuItem::Ptr& child,
                    const PXMenuItem::Ptr& grandchild, int childNumber);
    void openTerminalFromSubmenu(const PXMenuItem::Ptr& item, const PXMenuItem::Ptr& child,
                                 const PXMenuItem::Ptr& grandchild);

    std::shared_ptr<PXLoadingWinCtl> m_loadingWinCtl;
    Options m_options;
};

} // namespace px
