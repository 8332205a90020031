// Menus built from the project's artwork folder and the user's templates folder: what is read
// once per menu must still follow changes between menus.
#include "ExtensionFixture.h"
#include "support/FileStamp.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

using namespace px;
using namespace px::test;

namespace {

class MenuFreshnessTest : public ExtensionFixture {
  protected:
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
    // The "Visual Studio Code" entry's icon and the "New File" children's keys.
    std::pair<std::string, std::vector<std::string>> build() {
        Menu menu = sync.menuForMenuKind(MenuKind::ContextualItems);
        const MenuEntry* app = find(find(menu, "Common App")->children, "Visual Studio Code");
        return {app->icon, keys(find(menu, "New File")->children)};
    }
    static bool has(const std::vector<std::string>& keys, const std::string& key) {
        return std::find(keys.begin(), keys.end(), key) != keys.end();
    }

    TempDir artwork;
    ScopedEnv dataDir{"PXMENU_DATADIR", artwork.path()};
    Session sync{*this, recording()};
};

TEST_F(MenuFreshnessTest, ArtworkAndTemplatesAddedOrRemovedShowInTheNextMenu) {
    select({work.write("a.txt")}, work.path());
    const std::string icons = artwork.mkdir("icons"), templates = xdg.home() + "/Templates";
    std::filesystem::create_directories(templates);
    std::ofstream(templates + "/Invoice.ods") << "ods";
    // Freshly changed folders are always read again; wait so the stamps are what is relied on.
    letSettle({icons, templates});
    build(); // fills what the next menu may reuse
    auto [icon, newFile] = build();
    EXPECT_EQ(icon, "");
    EXPECT_TRUE(has(newFile, "Invoice.ods"));

    const std::string logo = artwork.write("icons/vscode.svg", "<svg/>");
    std::ofstream(templates + "/Letter.odt") << "odt";
    auto [added, more] = build();
    EXPECT_EQ(added, logo);
    EXPECT_EQ(more.size(), newFile.size() + 1);
    EXPECT_TRUE(has(more, "Letter.odt") && has(more, "Invoice.ods"));

    std::filesystem::remove(logo);
    std::filesystem::remove(templates + "/Invoice.ods");
    auto [removed, fewer] = build();
    EXPECT_EQ(removed, "");
    EXPECT_FALSE(has(fewer, "Invoice.ods"));
}

} // namespace
