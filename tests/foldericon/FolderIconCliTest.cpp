#include "e2e/CliFixture.h"

using namespace px::test;

namespace {

// Folder icons chosen through `pxmenu run`, as a file-manager plugin would start it.
class FolderIconCliTest : public CliFixture {
  protected:
    void SetUp() override {
        ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
        ASSERT_EQ(pxmenu({"config", "set", "pref", "is reviewed", "true"}).exitStatus, 0);
        ASSERT_EQ(pxmenu({"config", "add", "folder-icon", "google", "icon=google"}).exitStatus, 0);
    }
    std::vector<std::string> selection(const std::string& path) {
        return {"--kind", "0", "--target", work.path(), "--", path};
    }
    nlohmann::json iconMenu(const std::string& path) {
        const nlohmann::json menu = menuJson(selection(path));
        const auto* parent = entry(menu, "Folder Icon");
        return parent ? parent->at("children") : nlohmann::json::array();
    }
    ProcessResult choose(const std::string& path, const std::string& key) {
        const nlohmann::json offered = iconMenu(path);
        const auto* chosen = entry(offered, key);
        if (!chosen) return {-1, "", key + " is not offered"};
        std::vector<std::string> args{"run", "--tag",
                                      std::to_string(chosen->at("tag").get<long long>()), "--ui",
                                      "script:" + work.write(".script")};
        const auto rest = selection(path);
        args.insert(args.end(), rest.begin(), rest.end());
        return pxmenu(args);
    }
};

TEST_F(FolderIconCliTest, SetAndRecoverAnIconOnAFolderWithAnOddName) {
    const std::string folder = work.mkdir("a\"; rm x $(reboot)");
    work.write("a\"; rm x $(reboot)/.directory", "[Dolphin]\nVersion=4\n");
    ASSERT_EQ(keys(iconMenu(folder)), (std::vector<std::string>{"google", "Go Set"}));

    auto set = choose(folder, "google");
    ASSERT_EQ(set.exitStatus, 0) << set.err;
    EXPECT_EQ(set.out, "");
    EXPECT_EQ(readFile(folder + "/.directory"),
              "[Dolphin]\nVersion=4\n\n[Desktop Entry]\nIcon=" + std::string(PX_SOURCE_DIR) +
                  "/data/icons/google.svg\n");

    const nlohmann::json offered = iconMenu(folder);
    ASSERT_FALSE(offered.empty());
    EXPECT_EQ(offered.front().at("key"), "Recover Icon");
    EXPECT_EQ(offered.front().at("title"), "Recover");

    auto recovered = choose(folder, "Recover Icon");
    ASSERT_EQ(recovered.exitStatus, 0) << recovered.err;
    EXPECT_EQ(readFile(folder + "/.directory"), "[Dolphin]\nVersion=4\n");
    EXPECT_EQ(keys(iconMenu(folder)), (std::vector<std::string>{"google", "Go Set"}));
}

} // namespace
