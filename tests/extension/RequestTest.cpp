#include "support_files/ActionsFixture.h"

using namespace px;
using namespace px::test;

namespace {

class RequestTest : public ExtensionFixture {};

TEST_F(RequestTest, SelectionFallsBackToTheTargetAndDropsTheRoot) {
    using Paths = std::vector<std::string>;
    struct Case {
        Paths selection;
        std::string target;
        MenuKind kind;
        Paths expected;
        bool onItems;
    };
    const std::string a = work.path() + "/a";
    const std::vector<Case> cases{
        {{}, work.path(), MenuKind::ContextualItems, {work.path()}, true},
        {{}, work.path(), MenuKind::ContextualContainer, {work.path()}, false},
        {{"/", a}, work.path(), MenuKind::ContextualItems, {a}, true},
        {{"/"}, "/", MenuKind::ContextualItems, {}, false},
        {{}, "  ", MenuKind::Toolbar, {}, false}};
    for (const auto& [selection, target, kind, expected, onItems] : cases) {
        Request request({selection, target, kind, {}, services(), store});
        EXPECT_EQ(request.selection(), expected) << target;
        EXPECT_EQ(request.onItems(), onItems) << target;
    }
}

// Accepting the review prompt opens the program's page and is remembered.
TEST_F(RequestTest, TheAcceptedReviewPromptIsRemembered) {
    Session sync{*this};
    ui->answer("button 1000");
    commands::offerReview(sync.cx());
    EXPECT_EQ(workspace->opened.size(), 1u);
    EXPECT_TRUE(suite->boolForKey("is reviewed"));
}

} // namespace
