#pragma once

#include <string>
#include <vector>

namespace px::platform {

// What the file manager tells the extension about one request: the selected items, the folder
// being shown, and where it should consult the extension.
class FinderSyncController {
  public:
    virtual ~FinderSyncController() = default;
    virtual void setDirectoryURLs(const std::vector<std::string>& paths) = 0;
    virtual std::vector<std::string> directoryURLs() const = 0;
    virtual std::vector<std::string> selectedItemURLs() const = 0;
    virtual std::string targetedURL() const = 0;
};

// A controller filled from explicit values: the command line and tests.
class StaticFinderSyncController final : public FinderSyncController {
  public:
    StaticFinderSyncController(std::vector<std::string> selection, std::string target)
        : m_selection(std::move(selection)), m_target(std::move(target)) {}
    void setDirectoryURLs(const std::vector<std::string>& paths) override { m_directories = paths; }
    std::vector<std::string> directoryURLs() const override { return m_directories; }
    std::vector<std::string> selectedItemURLs() const override { return m_selection; }
    std::string targetedURL() const override { return m_target; }
    void setSelection(std::vector<std::string> selection) { m_selection = std::move(selection); }
    void setTarget(std::string target) { m_target = std::move(target); }

  private:
    std::vector<std::string> m_selection;
    std::string m_target;
    std::vector<std::string> m_directories;
};

} // namespace px::platform
