#include "platform/Platform.h"

#include "platform/MemorySettings.h"

namespace px::platform {

namespace {

// Stand-ins for services a host does not have: they refuse every request and keep nothing.
class NullUi final : public Ui {
  public:
    int runAlert(const Alert&) override { return 1001; }
    std::optional<SaveResult> runSavePanel(const SaveRequest&) override { return std::nullopt; }
    std::optional<std::string> runOpenPanel(const OpenRequest&) override { return std::nullopt; }
    std::optional<std::string> runNameEntry(const NameRequest&) override { return std::nullopt; }
    std::optional<EmbedResult> runEmbedDialog(const EmbedRequest&) override { return std::nullopt; }
    std::optional<Color> pickColor() override { return std::nullopt; }
    void progressOpen(std::function<void()>) override {}
    void progressSetPercent(double) override {}
    void progressSuccess(const std::string&) override {}
    void progressClose() override {}
};

class NullPasteboard final : public Pasteboard {
  public:
    void clearContents() override {}
    void setString(const std::string&) override {}
    std::optional<std::string> string() override { return std::nullopt; }
};

class NullWorkspace final : public Workspace {
  public:
    bool openURL(const std::string&) override { return false; }
    bool revealInFileManager(const std::string&) override { return false; }
    std::vector<std::string> mountedVolumes() override { return {}; }
    void observeMounts(std::function<void()>) override {}
};

class NullApplications final : public Applications {
  public:
    bool openWithApplication(const std::string&, const std::vector<std::string>&) override {
        return false;
    }
    bool launchDesktopEntry(const std::string&) override { return false; }
};

class NullServices final : public Services {
  public:
    bool performService(const std::string&, const std::vector<std::string>&) override {
        return false;
    }
};

template <typename T, typename StandIn> void fill(std::shared_ptr<T>& member) {
    if (!member) member = std::make_shared<StandIn>();
}

} // namespace

Platform Platform::withStandIns() const {
    Platform filled = *this;
    fill<Ui, NullUi>(filled.ui);
    fill<Pasteboard, NullPasteboard>(filled.pasteboard);
    fill<Workspace, NullWorkspace>(filled.workspace);
    fill<Applications, NullApplications>(filled.applications);
    fill<Services, NullServices>(filled.services);
    fill<Settings, MemorySettings>(filled.standardDefaults);
    if (!filled.controller)
        filled.controller =
            std::make_shared<StaticFinderSyncController>(std::vector<std::string>{}, "");
    return filled;
}

} // namespace px::platform
