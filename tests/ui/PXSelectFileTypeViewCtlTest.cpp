#include "actions/PXSelectFileTypeViewCtl.h"

#include "config/Localization.h"
#include "config/PXMenuManager.h"
#include "platform/Platform.h"
#include "platform/fake/FakeUi.h"
#include "platform/fake/MemorySettings.h"
#include "support_files/TestSupport.h"

#include <gtest/gtest.h>

namespace px {
namespace {

plist::Value templateEntry(plist::Dictionary fields) {
    return plist::Value::makeDictionary(std::move(fields));
}

class FileTypeChooserTest : public ::testing::Test {
  protected:
    void SetUp() override {
        PXMenuManager::configure(suite, folder.path());
        platform::Platform installed;
        installed.ui = ui;
        platform::install(std::move(installed));
        suite->setObject(
            "array new file",
            plist::Value::makeArray({
                templateEntry({{"key", "Special"}, {"special", true}, {"displayName", "Doc"}}),
                templateEntry({{"key", "txt"}, {"ext", "txt"}, {"displayName", "Plain Text"}}),
                templateEntry({{"key", "New File From Window"}}),
                templateEntry({{"key", "md"}, {"disabled", true}, {"displayName", "Markdown"}}),
            }));
    }
    void TearDown() override {
        platform::install({});
        PXMenuManager::resetToDefaultLocations();
    }

    std::vector<std::string> keys() const {
        std::vector<std::string> result;
        for (const auto& item : reported)
            result.push_back(item ? item->key : "(none)");
        return result;
    }

    test::ScopedXdg xdg;
    test::TempDir folder;
    std::shared_ptr<platform::MemorySettings> suite = std::make_shared<platform::MemorySettings>();
    std::shared_ptr<platform::FakeUi> ui = std::make_shared<platform::FakeUi>();
    std::vector<PXMenuItem::Ptr> reported;
};

TEST_F(FileTypeChooserTest, EntriesSkipSpecialAndWindowItemsAndKeepIndexes) {
    PXSelectFileTypeViewCtl chooser;
    ASSERT_EQ(chooser.fileArray.size(), 4u); // switched-off templates are offered too
    const auto entries = chooser.entries();
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].tag, 1u);
    EXPECT_EQ(entries[0].title, chooser.fileArray[1]->menuTitle() + " (.txt)");
    EXPECT_EQ(entries[1].tag, 3u);
    EXPECT_EQ(entries[1].title, chooser.fileArray[3]->menuTitle() + " (.md)"); // key, no ext
    EXPECT_EQ(PXSelectFileTypeViewCtl::tipLabel(), localized("File Type") + ":");
}

TEST_F(FileTypeChooserTest, IconsFollowThePreference) {
    PXSelectFileTypeViewCtl chooser;
    EXPECT_EQ(chooser.entries()[0].icon, chooser.fileArray[1]->menuIcon());
    suite->setBool("pref check4", true);
    EXPECT_EQ(chooser.entries()[0].icon, "");
}

TEST_F(FileTypeChooserTest, LoadingReportsTheFirstOfferedItem) {
    PXSelectFileTypeViewCtl chooser;
    chooser.selectHandler = [this](const PXMenuItem::Ptr& item) { reported.push_back(item); };
    chooser.loadView();
    EXPECT_EQ(keys(), std::vector<std::string>{"txt"});
    EXPECT_EQ(chooser.currentItem, chooser.fileArray[1]);

    chooser.onSelectItem(3);
    chooser.onSelectItem(std::nullopt);
    EXPECT_EQ(keys(), (std::vector<std::string>{"txt", "md", "(none)"}));
    EXPECT_EQ(chooser.currentItem, nullptr);
}

TEST_F(FileTypeChooserTest, NothingOfferedReportsNone) {
    suite->setObject("array new file",
                     plist::Value::makeArray({templateEntry({{"key", "a"}, {"special", true}})}));
    PXSelectFileTypeViewCtl chooser;
    chooser.selectHandler = [this](const PXMenuItem::Ptr& item) { reported.push_back(item); };
    chooser.loadView();
    EXPECT_EQ(keys(), std::vector<std::string>{"(none)"});
}

TEST_F(FileTypeChooserTest, SavePanelReportsTheFirstEntryAndTheChoice) {
    PXSelectFileTypeViewCtl chooser;
    chooser.selectHandler = [this](const PXMenuItem::Ptr& item) { reported.push_back(item); };
    platform::Ui::SaveRequest request{"/tmp", "Untitled", "", false, {}, {}, {}};
    chooser.attachTo(request);
    EXPECT_EQ(request.offeredTypeIndexes, (std::vector<std::size_t>{1, 3}));
    EXPECT_TRUE(reported.empty()); // reported when the panel shows the chooser

    ui->answers({"choose 3", "save /tmp/a.md", "save /tmp/b.txt"});
    ASSERT_TRUE(platform::ui().runSavePanel(request));
    EXPECT_EQ(keys(), (std::vector<std::string>{"txt", "md"}));
    EXPECT_EQ(chooser.currentItem, chooser.fileArray[3]);

    ASSERT_TRUE(platform::ui().runSavePanel(request));
    EXPECT_EQ(keys(), (std::vector<std::string>{"txt", "md", "txt"}));
    EXPECT_EQ(chooser.currentItem->key, "txt");
}

} // namespace
} // namespace px
