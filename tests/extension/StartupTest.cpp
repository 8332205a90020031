#include "ExtensionFixture.h"

using namespace px;
using namespace px::test;
using px::plist::Value;

namespace {

class FakeWorkspace final : public platform::Workspace {
  public:
    bool openURL(const std::string& url) override {
        opened.push_back(url);
        return true;
    }
    bool revealInFileManager(const std::string&) override { return true; }
    std::vector<std::string> mountedVolumes() override { return volumes; }
    void observeMounts(std::function<void()> handler) override { onMount = std::move(handler); }

    std::vector<std::string> volumes{"/media/usb", "/"}, opened;
    std::function<void()> onMount;
};

class StartupTest : public ExtensionFixture {
  protected:
    void SetUp() override {
        ExtensionFixture::SetUp();
        platform::current().workspace = workspace;
    }
    std::shared_ptr<FakeWorkspace> workspace = std::make_shared<FakeWorkspace>();
};

TEST_F(StartupTest, RootIsAlwaysMonitoredAndVolumesOnlyWhenAskedForASecondAfterAMount) {
    { FinderSync sync; }
    EXPECT_EQ(controller->directoryURLs(), (std::vector<std::string>{"/"}));
    EXPECT_FALSE(workspace->onMount);
    suite->setBool("pref check3", true);
    FinderSync sync;
    EXPECT_EQ(controller->directoryURLs(), (std::vector<std::string>{"/", "/media/usb"}));
    ASSERT_TRUE(workspace->onMount);
    workspace->volumes.push_back("/media/disk");
    workspace->onMount();
    EXPECT_EQ(controller->directoryURLs().size(), 2u);
    queue::runUntilIdle();
    EXPECT_EQ(controller->directoryURLs().size(), 3u);
}

TEST_F(StartupTest, OnlyAFileManagerSessionClearsTheCutList) {
    PXMenuManager::updateMenuKey(menukey::kRightMenu, "Cut Paste", "cutPaths",
                                 Value::makeArray({Value("/x")}));
    auto cutPaths = [&] {
        for (const auto& entry : suite->arrayForKey(menukey::kRightMenu).array())
            if (entry.get("key") == Value("Cut Paste")) return entry.get("cutPaths").array().size();
        return size_t{99};
    };
    { FinderSync commandLine; }
    EXPECT_EQ(cutPaths(), 1u);
    FinderSync plugin(FinderSync::Options{.clearCutList = true});
    EXPECT_EQ(cutPaths(), 0u);
}

TEST_F(StartupTest, SelectionFallsBackToTheTargetAndDropsTheRoot) {
    FinderSync sync;
    using Paths = std::vector<std::string>;
    struct Case {
        Paths selection;
        std::string target;
        Paths expected;
    };
    const std::string a = work.path() + "/a";
    const std::vector<Case> cases{{{}, work.path(), {work.path()}},
                                  {{"/", a}, work.path(), {a}},
                                  {{"/"}, "/", {}},
                                  {{}, "  ", {}}};
    for (const auto& [selection, target, expected] : cases) {
        sync.selectURLsCache.reset();
        select(selection, target);
        EXPECT_EQ(sync.selectURLs(), expected) << target;
    }
    sync.goReview();
    EXPECT_EQ(workspace->opened.size(), 1u);
    EXPECT_TRUE(suite->boolForKey("is reviewed")) << "going to the review page remembers it";
}

} // namespace
