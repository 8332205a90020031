#include "actions/PXSelectFileTypeViewCtl.h"
#include "config/PXMenuManager.h"
#include "platform/Platform.h"
#include "platform/fake/FakeUi.h"
#include "platform/fake/MemorySettings.h"
#include "support_files/TestSupport.h"

#include <gtest/gtest.h>

namespace px {
namespace {

using Texts = std::vector<std::string>;

class FileTypeChooserTest : public ::testing::Test {
  protected:
    void SetUp() override {
        platform::Platform installed;
        installed.ui = std::make_shared<platform::FakeUi>();
        platform::install(std::move(installed));
        PXMenuManager::configure(suite, folder.path());
        suite->setObject("array new file",
                         plist::Value::makeArray({
                             entry({{"key", "Special"}, {"special", true}, {"displayName", "Doc"}}),
                             entry({{"key", "txt"}, {"ext", "txt"}, {"displayName", "Plain"}}),
                             entry({{"key", "New File From Window"}}),
                             entry({{"key", "md"}, {"disabled", true}}),
                         }));
        makeChooser();
    }
    void makeChooser() {
        chooser.emplace();
        chooser->selectHandler = [this](const PXMenuItem::Ptr& item) {
            reported.push_back(item ? item->key : "(none)");
        };
    }
    void TearDown() override {
        platform::install({});
        PXMenuManager::resetToDefaultLocations();
    }
    static plist::Value entry(plist::Dictionary fields) {
        return plist::Value::makeDictionary(std::move(fields));
    }

    test::ScopedXdg xdg;
    test::TempDir folder;
    std::shared_ptr<platform::MemorySettings> suite = std::make_shared<platform::MemorySettings>();
    std::optional<PXSelectFileTypeViewCtl> chooser;
    Texts reported;
};

TEST_F(FileTypeChooserTest, EntriesSkipSpecialAndWindowItemsAndKeepTheirIndexes) {
    const auto entries = chooser->entries(); // switched-off templates are offered too
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_EQ(entries[0].tag, 1u);
    EXPECT_EQ(entries[0].title, chooser->fileArray[1]->menuTitle() + " (.txt)");
    EXPECT_EQ(entries[0].icon, chooser->fileArray[1]->menuIcon());
    EXPECT_EQ(entries[1].tag, 3u);
    EXPECT_EQ(entries[1].title, chooser->fileArray[3]->menuTitle() + " (.md)"); // key, no ext
    suite->setBool("pref check4", true);
    EXPECT_EQ(chooser->entries()[0].icon, "");
}

TEST_F(FileTypeChooserTest, LoadingReportsTheFirstOfferedItemThenEachChoice) {
    chooser->loadView();
    EXPECT_EQ(reported, Texts{"txt"});
    EXPECT_EQ(chooser->currentItem, chooser->fileArray[1]);
    chooser->onSelectItem(3);
    chooser->onSelectItem(std::nullopt);
    EXPECT_EQ(reported, (Texts{"txt", "md", "(none)"}));
    EXPECT_EQ(chooser->currentItem, nullptr);
    suite->setObject("array new file",
                     plist::Value::makeArray({entry({{"key", "a"}, {"special", true}})}));
    makeChooser();
    chooser->loadView();
    EXPECT_EQ(reported, (Texts{"txt", "md", "(none)", "(none)"})) << "nothing offered";
}

} // namespace
} // namespace px
