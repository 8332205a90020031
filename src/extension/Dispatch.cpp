// Turning a chosen tag back into its item, routing it to its action and counting the use.
#include "actions/Alerts.h"
#include "actions/FileHash.h"
#include "archive/PXLoadingWinCtl.h"
#include "config/Localization.h"
#include "config/PXMenuManager.h"
#include "extension/FinderSync.h"
#include "extension/MenuTag.h"
#include "platform/Platform.h"
#include "support/BuildConfig.h"
#include "support/Notifications.h"
#include "support/PXCheckPermit.h"
#include "support/Queues.h"

namespace px {

namespace {

std::string parentFolder(const std::string& path) {
    auto slash = path.rfind('/');
    if (slash == std::string::npos) return "";
    return slash == 0 ? "/" : path.substr(0, slash);
}

constexpr int kReviewCadence = 30;
constexpr int kReviewAt = 3;
constexpr int kReviewDelaySeconds = 3;

} // namespace

void FinderSync::onMenuItemAction(std::int64_t tag) {
    queue::syncOnMain([&] {
        const auto selection = selectURLs();
        std::vector<std::string> indexes = menutag::pieces(tag);
        int top = menutag::pieceValue(indexes.front()) - 1;
        indexes.erase(indexes.begin());
        if (!rightMenuArray || top < 0 || static_cast<std::size_t>(top) >= rightMenuArray->size()) {
            rightMenuArray.reset();
            return;
        }
        PXMenuItem::Ptr item = (*rightMenuArray)[static_cast<std::size_t>(top)];
        if (!item->disabledAuth && !selection.empty())
            PXCheckPermit::checkPermitWithPath(
                parentFolder(selection.front()),
                [this, item, indexes] { readyStart(item, indexes); }, [] {});
        else
            readyStart(item, indexes);
        rightMenuArray.reset();
    });
}

void FinderSync::readyStart(const PXMenuItem::Ptr& item, std::vector<std::string> indexes) {
    if (item->children && !item->children->empty()) {
        if (indexes.empty()) return;
        int childNumber = menutag::pieceValue(indexes.front());
        if (childNumber < 1 || static_cast<std::size_t>(childNumber) > item->children->size())
            return;
        indexes.erase(indexes.begin());
        PXMenuItem::Ptr child = (*item->children)[static_cast<std::size_t>(childNumber - 1)];
        if (child->key == "Go Set") return goSet();
        int grand = indexes.empty() ? -1 : menutag::pieceValue(indexes.front()) - 1;
        PXMenuItem::Ptr grandchild;
        if (grand >= 0 && child->children &&
            static_cast<std::size_t>(grand) < child->children->size())
            grandchild = (*child->children)[static_cast<std::size_t>(grand)];
        routeChild(item, child, grandchild, childNumber);
    } else {
        routeWithoutChildren(item);
    }
    _useSuccess(item);
}

void FinderSync::routeChild(const PXMenuItem::Ptr& item, const PXMenuItem::Ptr& child,
                            const PXMenuItem::Ptr& grandchild, int childNumber) {
    if (item->isNewFile()) return createFileWithItem(child);
    if (item->isCommonPath()) return openCommonPath(child->path, grandchild);
    if (item->isCommonApp()) {
        if (!filehash::isValid(child->appName)) return;
        child->tag = childNumber - 1;
        return openWithApp(child, std::nullopt);
    }
    if (item->isFolderIcon()) return setFolderIcon(child);
    if (item->isConvert()) {
        child->tag = childNumber - 1;
        return convertItem(child, item);
    }
    if (item->isFileInfo()) {
        child->tag = childNumber - 1;
        return copyfileInfo(child);
    }
    if (item->isCopy() || item->isMove()) {
        PXMenuItem::Ptr target = grandchild ? grandchild : child;
        if (!filehash::isValid(target->path)) target = child;
        return moveAndCopyItem(target, item->isCopy());
    }
    if (item->isTerminalTo()) openTerminalFromSubmenu(item, child, grandchild);
}

void FinderSync::openTerminalFromSubmenu(const PXMenuItem::Ptr& item, const PXMenuItem::Ptr& child,
                                         const PXMenuItem::Ptr& grandchild) {
    std::string path =
        grandchild && filehash::isValid(grandchild->path) ? grandchild->path : child->path;
    if (!filehash::isValid(path)) {
        auto chosen = PXCheckPermit::selectFolderWithPrompt("");
        if (!chosen) return;
        path = *chosen;
    }
    openServe(item->serve, path);
}

void FinderSync::routeWithoutChildren(const PXMenuItem::Ptr& item) {
    const std::string& key = item->key;
    if (filehash::isValid(item->appName)) return openWithApp(item, std::nullopt);
    if (filehash::isValid(item->serve)) return openServe(item->serve, std::nullopt);
    if (key == "Delete") return deletePath();
    if (key == "Copy Path") return copyPath();
    if (key == "System Hide Files") return showSystemFiles(item);
    if (item->isShowHideFile) return hideAndShowFiles(item);
    if (item->isLockUnlock()) return lockUnlockFiles(item);
    if (item->isCutPaste()) return cutPasteItem(item);
    if (item->isMainMenuNewFile) return createFileWithItem(item);
    if (item->isCompress()) return encryptedCompress(item);
    if (item->isEmbedFolder()) return embedFolder();
    if (item->isUnembedFolder()) return unembedFolder();
    if (item->isColorPicker()) return startColorPicker();
    if (item->isExecuteScript()) return executeScript();
    if (item->isExtractIcon()) extractIcon();
}

void FinderSync::_useSuccess(const PXMenuItem::Ptr& item) {
    auto& suite = PXMenuManager::sharedDefaults();
    suite.increment(item->key);
    std::int64_t total = suite.increment("use count");
    if (total % kReviewCadence != kReviewAt || suite.boolForKey("is reviewed")) return;
    queue::enterForegroundWithDelay(kReviewDelaySeconds, [this] {
        std::vector<std::string> buttons{localized("Go Review"), localized("Next Time")};
        alert::alertWithMsg(localized("Review Tip"), buttons, [this](int result) {
            if (result == 1000) goReview();
        });
    });
}

void FinderSync::goSet() {
    if (!PXMenuManager::openMainApp()) alert::alertWithMsg(localized("Settings Missing Tip"));
}

void FinderSync::goReview() {
    platform::workspace().openURL(kHomePage);
    PXMenuManager::sharedDefaults().setBool("is reviewed", true);
}

void FinderSync::clean() {
    if (m_loadingWinCtl) m_loadingWinCtl->close();
    m_loadingWinCtl.reset();
    compress.reset();
    embedFolderWinCtl.reset();
}

PXLoadingWinCtl& FinderSync::loadingWinCtl() {
    if (!m_loadingWinCtl) m_loadingWinCtl = std::make_shared<PXLoadingWinCtl>();
    return *m_loadingWinCtl;
}

void FinderSync::beginLoading() {
    ++loadingCount;
    loadingWinCtl().open();
}

void FinderSync::endLoading() {
    if (--loadingCount <= 0) {
        loadingCount = 0;
        clean();
    }
}

void FinderSync::addNotification(const std::string& name) {
    NotificationCenter::defaultCenter().addNotification(
        this, name, [this](const std::string& n) { handleSignal(n); });
}

void FinderSync::removeNotification(const std::string& name) {
    NotificationCenter::defaultCenter().removeNotification(this, name);
}

// Notifications nobody asked this object to handle are ignored.
void FinderSync::handleSignal(const std::string&) {}

} // namespace px
