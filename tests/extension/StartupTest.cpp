#include "support_files/ActionsFixture.h"

using namespace px;
using namespace px::test;

namespace {

class StartupTest : public ExtensionFixture {
  protected:
    void SetUp() override {
        ExtensionFixture::SetUp();
        platform::current().workspace = workspace;
    }
    std::shared_ptr<RecordingWorkspace> workspace = std::make_shared<RecordingWorkspace>();
};

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
