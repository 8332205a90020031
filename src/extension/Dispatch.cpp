// Turning a chosen tag back into its item, routing it to its action and counting the use.
#include "extension/Dispatch.h"

#include "extension/MenuTag.h"
#include "support/FileHash.h"
#include "support/Queues.h"

#include <algorithm>

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

const PXMenuItem* childAt(const PXMenuItem& item, int number) {
    if (number < 1 || !item.children || static_cast<std::size_t>(number) > item.children->size())
        return nullptr;
    return (*item.children)[static_cast<std::size_t>(number - 1)].get();
}

void openTerminalFromSubmenu(const PXMenuItem& item, const PXMenuItem& child,
                             const PXMenuItem* grandchild, const Request& request,
                             MenuActions& actions) {
    std::string path =
        grandchild && filehash::isValid(grandchild->path) ? grandchild->path : child.path;
    if (!filehash::isValid(path)) {
        auto chosen = request.permits().selectFolderWithPrompt("");
        if (!chosen) return;
        path = *chosen;
    }
    actions.openService(item.serve, path);
}

void routeChild(const PXMenuItem& item, const PXMenuItem& child, const PXMenuItem* grandchild,
                std::size_t index, const Request& request, MenuActions& actions) {
    switch (item.kind) {
    case ItemKind::NewFile:
        return actions.createFile(child);
    case ItemKind::CommonPath:
        return actions.openCommonPath(child.path, grandchild);
    case ItemKind::CommonApp:
        if (filehash::isValid(child.appName)) actions.openWithApp(child);
        return;
    case ItemKind::FolderIcon:
        return actions.setFolderIcon(child);
    case ItemKind::Convert:
        return actions.convert(child, index, item);
    case ItemKind::FileInfo:
        return actions.copyFileInfo(child, index);
    case ItemKind::CopyTo:
    case ItemKind::MoveTo: {
        const PXMenuItem* target = grandchild ? grandchild : &child;
        if (!filehash::isValid(target->path)) target = &child;
        return actions.moveOrCopy(*target, item.isCopy());
    }
    case ItemKind::TerminalTo:
        return openTerminalFromSubmenu(item, child, grandchild, request, actions);
    default:
        return;
    }
}

void routeWithoutChildren(const PXMenuItem& item, MenuActions& actions) {
    if (filehash::isValid(item.appName)) return actions.openWithApp(item);
    if (filehash::isValid(item.serve)) return actions.openService(item.serve, std::nullopt);
    if (item.visibility != Visibility::Unchanged) return actions.changeVisibility(item.visibility);
    if (item.isMainMenuNewFile) return actions.createFile(item);
    switch (item.kind) {
    case ItemKind::Delete:
        return actions.deleteItems();
    case ItemKind::CopyPath:
        return actions.copyPath();
    case ItemKind::SystemHideFiles:
        return actions.showSystemFiles(item);
    case ItemKind::LockUnlock:
        return actions.lockUnlock();
    case ItemKind::CutPaste:
        return actions.cutPaste(item);
    case ItemKind::Compress:
        return actions.compress();
    case ItemKind::EmbedFolder:
        return actions.embedFolder();
    case ItemKind::UnembedFolder:
        return actions.unembedFolder();
    case ItemKind::ColorPicker:
        return actions.pickColor();
    case ItemKind::ExecuteScript:
        return actions.executeScript();
    case ItemKind::ExtractIcon:
        return actions.extractIcon();
    default:
        return;
    }
}

void countUse(const PXMenuItem& item, const Request& request, MenuActions& actions) {
    auto& suite = request.preferences();
    suite.increment(item.key);
    std::int64_t total = suite.increment("use count");
    if (!request.offersReview() || total % kReviewCadence != kReviewAt ||
        suite.boolForKey("is reviewed"))
        return;
    queue::enterForegroundWithDelay(kReviewDelaySeconds, [&actions] { actions.offerReview(); });
}

// The chosen item and the rest of the tag below it.
void readyStart(const PXMenuItem& item, std::vector<std::string> indexes, const Request& request,
                MenuActions& actions) {
    if (item.children && !item.children->empty()) {
        if (indexes.empty()) return;
        int childNumber = menutag::pieceValue(indexes.front());
        const PXMenuItem* child = childAt(item, childNumber);
        if (!child) return;
        indexes.erase(indexes.begin());
        if (child->kind == ItemKind::GoSet) return actions.openSettings();
        const PXMenuItem* grandchild =
            indexes.empty() ? nullptr : childAt(*child, menutag::pieceValue(indexes.front()));
        routeChild(item, *child, grandchild, static_cast<std::size_t>(childNumber - 1), request,
                   actions);
    } else {
        routeWithoutChildren(item, actions);
    }
    countUse(item, request, actions);
}

} // namespace

DispatchResult dispatch(const BuiltMenu& menu, std::int64_t tag, const Request& request,
                        MenuActions& actions) {
    if (!findEntryWithTag(menu.entries, tag)) return DispatchResult::TagNotFound;
    if (!request.keyPath().empty() && keyPathOfTag(menu.entries, tag) != request.keyPath())
        return DispatchResult::KeyPathChanged;
    std::vector<std::string> indexes = menutag::pieces(tag);
    int top = menutag::pieceValue(indexes.front()) - 1;
    indexes.erase(indexes.begin());
    if (top < 0 || static_cast<std::size_t>(top) >= menu.items.size())
        return DispatchResult::TagNotFound;
    queue::syncOnMain([&] {
        const PXMenuItem& item = *menu.items[static_cast<std::size_t>(top)];
        const auto& selection = request.selection();
        if (!item.disabledAuth && !selection.empty())
            request.permits().checkPermitWithPath(
                parentFolder(selection.front()),
                [&, indexes] { readyStart(item, indexes, request, actions); }, [] {});
        else
            readyStart(item, indexes, request, actions);
    });
    return DispatchResult::Ran;
}

} // namespace px
