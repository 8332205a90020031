// A plugin only builds menus: choosing an entry starts `pxmenu run`, which carries out the
// command in its own process. FinderSync still names every action in its virtual table, so the
// plugins define them here as doing nothing instead of linking the action libraries (archives,
// PDF, digests) into the file manager. This file goes once menu building links without actions.
#include "extension/FinderSync.h"

namespace px {

void FinderSync::createFileWithItem(const PXMenuItem::Ptr&) {}
void FinderSync::openCommonPath(const std::string&, const PXMenuItem::Ptr&) {}
void FinderSync::openWithApp(const PXMenuItem::Ptr&, const std::optional<std::string>&) {}
void FinderSync::setFolderIcon(const PXMenuItem::Ptr&) {}
void FinderSync::convertItem(const PXMenuItem::Ptr&, const PXMenuItem::Ptr&) {}
void FinderSync::copyfileInfo(const PXMenuItem::Ptr&) {}
void FinderSync::moveAndCopyItem(const PXMenuItem::Ptr&, bool) {}
void FinderSync::openServe(const std::string&, const std::optional<std::string>&) {}
void FinderSync::deletePath() {}
void FinderSync::copyPath() {}
void FinderSync::showSystemFiles(const PXMenuItem::Ptr&) {}
void FinderSync::hideAndShowFiles(const PXMenuItem::Ptr&) {}
void FinderSync::lockUnlockFiles(const PXMenuItem::Ptr&) {}
void FinderSync::cutPasteItem(const PXMenuItem::Ptr&) {}
void FinderSync::encryptedCompress(const PXMenuItem::Ptr&) {}
void FinderSync::embedFolder() {}
void FinderSync::unembedFolder() {}
void FinderSync::startColorPicker() {}
void FinderSync::executeScript() {}
void FinderSync::extractIcon() {}

} // namespace px
