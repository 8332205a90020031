// Menus built from the real settings file, the project's artwork folder and the user's
// templates folder: what is read once per menu must still follow changes between menus.
#include "ExtensionFixture.h"
#include "platform/linux/PlistFileSettings.h"
#include "support/FileStamp.h"
#include "support/ReadScope.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

using namespace px;
using namespace px::test;
using px::plist::Value;

namespace {

class MenuFreshnessTest : public ExtensionFixture {
  protected:
    void SetUp() override {
        ExtensionFixture::SetUp();
        PXMenuManager::configure(std::make_shared<platform::PlistFileSettings>(settingsPath()),
                                 data.path());
        PXDefaultData::setup();
        select({work.write("a.txt")}, work.path());
        sync = std::make_unique<RecordingFinderSync>();
    }

    std::string settingsPath() const { return xdg.configHome() + "/pxmenu/group.plist"; }
    std::string templates() const { return xdg.home() + "/Templates"; }

    // Another process's view of the same settings file.
    platform::PlistFileSettings otherProcess() const {
        return platform::PlistFileSettings(settingsPath());
    }

    // Waits until the folders' last changes are old enough for their stamps to be trusted.
    static void letSettle(const std::vector<std::string>& folders) {
        auto settled = [&] {
            const long long now = io::FileStamp::nowNanos();
            return std::all_of(folders.begin(), folders.end(), [now](const std::string& folder) {
                return io::FileStamp::of(folder).isSettledAt(now);
            });
        };
        while (!settled())
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }

    Menu build() { return sync->menuForMenuKind(MenuKind::ContextualItems); }

    const MenuEntry* commonApp(const Menu& menu, const std::string& key) {
        const MenuEntry* apps = find(menu, "Common App");
        return apps ? find(apps->children, key) : nullptr;
    }

    TempDir artwork;
    ScopedEnv dataDir{"PXMENU_DATADIR", artwork.path()};
    std::unique_ptr<RecordingFinderSync> sync;
};

TEST_F(MenuFreshnessTest, SettingsChangedByAnotherProcessShowInTheNextMenu) {
    Menu before = build();
    ASSERT_TRUE(find(before, "Copy to"));
    EXPECT_FALSE(find(before, "Copy to")->icon.empty());

    auto other = otherProcess();
    other.setBool("pref check1", true);
    other.modify(menukey::kRightMenu, [](const Value& stored) {
        Value list = stored.mutableCopy();
        std::erase_if(list.mutableArray(),
                      [](const Value& entry) { return entry.get("key") == Value("Move to"); });
        return list;
    });

    Menu after = build();
    EXPECT_TRUE(find(after, "Copy to")->icon.empty());
    EXPECT_FALSE(find(after, "Move to"));
    EXPECT_EQ(after.size() + 1, before.size());
}

TEST_F(MenuFreshnessTest, AWriteDuringAMenuKeepsWhatAnotherProcessWroteMeanwhile) {
    build();
    {
        ReadScope scope; // as inside a menu build
        EXPECT_FALSE(PXMenuManager::sharedDefaults().boolForKey("pref check6"));
        otherProcess().setBool("pref check6", true);
        PXMenuManager::sharedDefaults().setInteger("use count", 7);
    }
    EXPECT_TRUE(otherProcess().boolForKey("pref check6"));
    EXPECT_EQ(otherProcess().integerForKey("use count"), 7);
    EXPECT_TRUE(PXMenuManager::sharedDefaults().boolForKey("pref check6"));
}

TEST_F(MenuFreshnessTest, ArtworkAndTemplatesAddedOrRemovedShowInTheNextMenu) {
    const std::string icons = artwork.mkdir("icons");
    std::filesystem::create_directories(templates());
    std::ofstream(templates() + "/Invoice.ods") << "ods";
    // Freshly changed folders are always read again; wait so the stamps are what is relied on.
    letSettle({icons, templates()});
    std::size_t templateCount = 0;
    for (int i = 0; i < 2; ++i) { // the first menu fills what the second may reuse
        Menu menu = build();
        ASSERT_TRUE(commonApp(menu, "Visual Studio Code"));
        EXPECT_EQ(commonApp(menu, "Visual Studio Code")->icon, "");
        ASSERT_TRUE(find(menu, "New File"));
        EXPECT_TRUE(find(find(menu, "New File")->children, "Invoice.ods"));
        templateCount = find(menu, "New File")->children.size();
    }

    const std::string logo = artwork.write("icons/vscode.svg", "<svg/>");
    std::ofstream(templates() + "/Letter.odt") << "odt";
    Menu added = build();
    EXPECT_EQ(commonApp(added, "Visual Studio Code")->icon, logo);
    const auto& newFile = find(added, "New File")->children;
    EXPECT_EQ(newFile.size(), templateCount + 1);
    EXPECT_TRUE(find(newFile, "Letter.odt"));
    EXPECT_TRUE(find(newFile, "Invoice.ods"));

    std::filesystem::remove(logo);
    std::filesystem::remove(templates() + "/Invoice.ods");
    Menu removed = build();
    EXPECT_EQ(commonApp(removed, "Visual Studio Code")->icon, "");
    EXPECT_FALSE(find(find(removed, "New File")->children, "Invoice.ods"));
}

} // namespace
