#include "platform/Platform.h"

#include "platform/linux/PlistFileSettings.h"
#include "support/Xdg.h"

#include <mutex>

namespace px::platform {

namespace {

// Stand-ins used when a host installed nothing: they refuse every prompt and keep nothing.
class NullUi final : public Ui {
  public:
    int runAlert(const Alert&) override { return 1001; }
    std::optional<SaveResult> runSavePanel(const SaveRequest&) override { return std::nullopt; }
    std::optional<std::string> runOpenPanel(const OpenRequest&) override { return std::nullopt; }
    std::optional<std::string> runNameEntry(const NameRequest&) override { return std::nullopt; }
    std::optional<EmbedResult> runEmbedDialog(const EmbedRequest&) override { return std::nullopt; }
    std::optional<Color> pickColor() override { return std::nullopt; }
    void progressOpen(std::function<void()>) override {}
    void progressShow(const Progress&) override {}
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
};

class NullServices final : public Services {
  public:
    bool performService(const std::string&, const std::vector<std::string>&) override {
        return false;
    }
};

std::mutex& mutex() {
    static std::mutex instance;
    return instance;
}

Platform& slot() {
    static Platform instance;
    return instance;
}

template <typename T, typename Fallback> T& orFallback(std::shared_ptr<T> Platform::*member) {
    std::lock_guard guard(mutex());
    auto& value = slot().*member;
    if (!value) value = std::make_shared<Fallback>();
    return *value;
}

class DefaultStandardDefaults final {
  public:
    static std::shared_ptr<Settings> make() {
        return std::make_shared<PlistFileSettings>(xdg::settingsFolder() + "/extension.plist");
    }
};

} // namespace

Platform& current() {
    return slot();
}

void install(Platform platform) {
    std::lock_guard guard(mutex());
    slot() = std::move(platform);
}

Ui& ui() {
    return orFallback<Ui, NullUi>(&Platform::ui);
}
Pasteboard& pasteboard() {
    return orFallback<Pasteboard, NullPasteboard>(&Platform::pasteboard);
}
Workspace& workspace() {
    return orFallback<Workspace, NullWorkspace>(&Platform::workspace);
}
Applications& applications() {
    return orFallback<Applications, NullApplications>(&Platform::applications);
}
Services& services() {
    return orFallback<Services, NullServices>(&Platform::services);
}

FinderSyncController& controller() {
    std::lock_guard guard(mutex());
    auto& value = slot().controller;
    if (!value)
        value = std::make_shared<StaticFinderSyncController>(std::vector<std::string>{}, "");
    return *value;
}

Settings& standardDefaults() {
    std::lock_guard guard(mutex());
    auto& value = slot().standardDefaults;
    if (!value) value = DefaultStandardDefaults::make();
    return *value;
}

} // namespace px::platform
