#pragma once

#include "extension/ExtensionFixture.h"
#include "platform/fake/FakeApplications.h"
#include "platform/fake/FakePasteboard.h"
#include "platform/fake/FakeServices.h"
#include "support_files/FakeUiLog.h"

namespace px::test {

// A workspace that records what it was asked to open or show, and answers `answer`.
class RecordingWorkspace final : public platform::Workspace {
  public:
    bool answer = true;
    std::vector<std::string> opened;
    std::vector<std::string> revealed;

    bool openURL(const std::string& url) override {
        opened.push_back(url);
        return answer;
    }
    bool revealInFileManager(const std::string& path) override {
        revealed.push_back(path);
        return answer;
    }
    std::vector<std::string> mountedVolumes() override { return {}; }
    void observeMounts(std::function<void()>) override {}
};

// The extension's actions run for real against fakes of the desktop: applications "Viewer" and
// "Warp" are installed, and every service call is recorded.
class ActionsFixture : public ExtensionFixture {
  protected:
    void SetUp() override {
        ExtensionFixture::SetUp();
        auto& current = platform::current();
        current.applications = apps;
        current.services = services;
        current.pasteboard = pasteboard;
        current.workspace = workspace;
    }
    // The selection and the kind of menu it was opened from, as the menu builder leaves them.
    void selectFor(FinderSync& sync, std::vector<std::string> paths, std::string target,
                   bool onItems) {
        select(std::move(paths), std::move(target));
        sync.selectURLsCache.reset();
        sync.isSelectURL = onItems;
    }
    static PXMenuItem::Ptr appItem(const std::string& name) {
        auto item = PXMenuItem::create(name);
        item->appName = name;
        return item;
    }
    static std::string fileUrl(const std::string& path) { return PXFile(path).url(); }
    std::vector<std::string> alertTexts() const { return test::alertTexts(*ui); }

    std::shared_ptr<platform::FakeApplications> apps =
        std::make_shared<platform::FakeApplications>(std::set<std::string>{"Viewer", "Warp"});
    std::shared_ptr<platform::FakeServices> services = std::make_shared<platform::FakeServices>();
    std::shared_ptr<platform::FakePasteboard> pasteboard =
        std::make_shared<platform::FakePasteboard>();
    std::shared_ptr<RecordingWorkspace> workspace = std::make_shared<RecordingWorkspace>();
};

} // namespace px::test
