#include "actions/FullActions.h"

#include "actions/Commands.h"

namespace px {

void FullActions::createFile(const PXMenuItem& item) {
    commands::createFile(m_context, item);
}
void FullActions::openCommonPath(const std::string& path, const PXMenuItem* entry) {
    commands::openCommonPath(m_context, path, entry);
}
void FullActions::openWithApp(const PXMenuItem& item) {
    commands::openWithApp(m_context, item, std::nullopt);
}
void FullActions::setFolderIcon(const PXMenuItem& item) {
    commands::setFolderIcon(m_context, item);
}
void FullActions::convert(const PXMenuItem& target, std::size_t index, const PXMenuItem& parent) {
    commands::convert(m_context, target, index, parent);
}
void FullActions::copyFileInfo(const PXMenuItem& digest, std::size_t index) {
    commands::copyFileInfo(m_context, digest, index);
}
void FullActions::moveOrCopy(const PXMenuItem& destination, bool isCopy) {
    commands::moveOrCopy(m_context, destination, isCopy);
}
void FullActions::openService(const std::string& serve, const std::optional<std::string>& path) {
    commands::openService(m_context, serve, path);
}
void FullActions::deleteItems() {
    commands::deleteItems(m_context);
}
void FullActions::copyPath() {
    commands::copyPath(m_context);
}
void FullActions::showSystemFiles(const PXMenuItem& item) {
    commands::showSystemFiles(m_context, item);
}
void FullActions::changeVisibility(Visibility visibility) {
    commands::changeVisibility(m_context, visibility);
}
void FullActions::lockUnlock() {
    commands::lockUnlock(m_context);
}
void FullActions::cutPaste(const PXMenuItem& item) {
    commands::cutPaste(m_context, item);
}
void FullActions::compress() {
    commands::compress(m_context);
}
void FullActions::embedFolder() {
    commands::embedFolder(m_context);
}
void FullActions::unembedFolder() {
    commands::unembedFolder(m_context);
}
void FullActions::pickColor() {
    commands::pickColor(m_context);
}
void FullActions::executeScript() {
    commands::executeScript(m_context);
}
void FullActions::extractIcon() {
    commands::extractIcon(m_context);
}
void FullActions::openSettings() {
    commands::openSettings(m_context);
}
void FullActions::offerReview() {
    commands::offerReview(m_context);
}

} // namespace px
