#pragma once

#include "actions/ActionContext.h"
#include "extension/MenuActions.h"

namespace px {

// The menu's commands, carried out for real on one request.
class FullActions final : public MenuActions {
  public:
    explicit FullActions(Request& request) : m_context(request) {}

    void createFile(const PXMenuItem& item) override;
    void openCommonPath(const std::string& path, const PXMenuItem* entry) override;
    void openWithApp(const PXMenuItem& item) override;
    void setFolderIcon(const PXMenuItem& item) override;
    void convert(const PXMenuItem& target, std::size_t index, const PXMenuItem& parent) override;
    void copyFileInfo(const PXMenuItem& digest, std::size_t index) override;
    void moveOrCopy(const PXMenuItem& destination, bool isCopy) override;
    void openService(const std::string& serve, const std::optional<std::string>& path) override;
    void deleteItems() override;
    void copyPath() override;
    void showSystemFiles(const PXMenuItem& item) override;
    void changeVisibility(Visibility visibility) override;
    void lockUnlock() override;
    void cutPaste(const PXMenuItem& item) override;
    void compress() override;
    void embedFolder() override;
    void unembedFolder() override;
    void pickColor() override;
    void executeScript() override;
    void extractIcon() override;
    void openSettings() override;
    void offerReview() override;

    ActionContext& context() { return m_context; }

  private:
    ActionContext m_context;
};

} // namespace px
