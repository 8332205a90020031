#include "NewFileFixture.h"
#include "config/Localization.h"

#include <regex>
#include <sys/stat.h>

using namespace px;
using namespace px::test;

namespace {

class AddToTemplateTest : public NewFileFixture {
  protected:
    void addToTemplate(const std::string& path) {
        create(PXMenuItem::create("Add to File Template"), {path});
    }
    static plist::Value lastStoredEntry() {
        auto list = PXMenuManager::sharedDefaults().arrayForKey(menukey::kNewFile);
        return list.array().back();
    }
    static std::string field(const plist::Value& entry, const std::string& key) {
        auto found = entry.dictionary().find(key);
        return found == entry.dictionary().end() ? std::string("<absent>") : found->second.string();
    }
    // Width and height from a PNG's header.
    static std::pair<int, int> pngSize(const std::string& path) {
        std::string bytes = readFile(path);
        if (bytes.size() < 24 || bytes.compare(1, 3, "PNG") != 0) return {0, 0};
        auto number = [&](std::size_t at) {
            return (static_cast<unsigned char>(bytes[at]) << 24) |
                   (static_cast<unsigned char>(bytes[at + 1]) << 16) |
                   (static_cast<unsigned char>(bytes[at + 2]) << 8) |
                   static_cast<unsigned char>(bytes[at + 3]);
        };
        return {number(16), number(20)};
    }
};

TEST_F(AddToTemplateTest, AFileBecomesTheLastEntryAndMakesNewFiles) {
    const std::size_t before = PXMenuManager::newFileTemplateMenuArray(true).size();
    std::string source = work.write("Weekly Report.MD", "# Week\n");
    addToTemplate(source);

    const auto entry = lastStoredEntry();
    const std::string key = field(entry, "key");
    EXPECT_TRUE(std::regex_match(key, std::regex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}")));
    EXPECT_EQ(field(entry, "ext"), "md");
    EXPECT_EQ(field(entry, "displayName"), "Weekly Report");
    const std::string templates = data.path() + "/PXFileTemplate/";
    EXPECT_EQ(field(entry, "templatePath"), templates + key);
    EXPECT_EQ(readFile(templates + key), "# Week\n");
    EXPECT_EQ(readFile(source), "# Week\n");
    const std::string icon = field(entry, "iconPath");
    if (icon == "<absent>") {
        EXPECT_FALSE(exists(templates + key + ".png"));
    } else {
        EXPECT_EQ(icon, templates + key + ".png");
        EXPECT_EQ(pngSize(icon), std::make_pair(60, 60));
    }
    const auto& progress = ui->progress();
    EXPECT_TRUE(std::any_of(progress.begin(), progress.end(), [](const auto& event) {
        return event.kind == platform::FakeUi::ProgressEvent::Kind::Success &&
               event.text == localized("Success Common Tip");
    }));

    auto entries = PXMenuManager::newFileTemplateMenuArray(true);
    ASSERT_EQ(entries.size(), before + 1);
    TempDir elsewhere;
    create(entries.back(), {elsewhere.path()});
    EXPECT_EQ(readFile(elsewhere / "Untitled.md"), "# Week\n");
}

TEST_F(AddToTemplateTest, AnImageIsItsOwnIcon) {
    // A 40 x 20 picture: drawn into 60 x 60, centred, between transparent bands.
    const std::string tool = std::string(PX_SOURCE_DIR) + "/tests/newfile/png_tool.py";
    const std::string image = work / "wide.png";
    ASSERT_EQ(runProcess({"python3", tool, "solid", image, "40", "20", "255", "0", "0", "255"})
                  .exitStatus,
              0);
    addToTemplate(image);
    const std::string icon = field(lastStoredEntry(), "iconPath");
    ASSERT_NE(icon, "<absent>");
    EXPECT_EQ(pngSize(icon), std::make_pair(60, 60));
    auto result = runProcess({"python3", tool, "pixels", icon, "30", "30", "30", "2"});
    ASSERT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(result.out, "255 0 0 255\n0 0 0 0\n");
}

TEST_F(AddToTemplateTest, AFolderIsCopiedWholeEachTime) {
    work.write("Site/index.html", "<p>hi</p>");
    work.write("Site/css/site.css", "p{}");
    addToTemplate(work / "Site");
    const auto entry = lastStoredEntry();
    EXPECT_EQ(field(entry, "ext"), "");
    EXPECT_EQ(field(entry, "displayName"), "Site");

    TempDir target;
    auto item = PXMenuManager::newFileTemplateMenuArray(true).back();
    create(item, {target.path()});
    ui->answer("button 1000");
    create(item, {target.path()});
    EXPECT_EQ(names(target.path()), (std::vector<std::string>{"Untitled", "Untitled-1"}));
    EXPECT_EQ(readFile(target / "Untitled-1/css/site.css"), "p{}");
    EXPECT_EQ(readFile(target / "Untitled/index.html"), "<p>hi</p>");
}

TEST_F(AddToTemplateTest, AnUncopyableItemAddsNothing) {
    const std::size_t before = PXMenuManager::newFileTemplateMenuArray(true).size();
    ASSERT_EQ(::mkfifo((work / "pipe").c_str(), 0600), 0);
    addToTemplate(work / "pipe");
    addToTemplate(work / "vanished.txt");
    EXPECT_EQ(PXMenuManager::newFileTemplateMenuArray(true).size(), before);
    ASSERT_EQ(ui->alerts().size(), 2u);
    EXPECT_EQ(ui->alerts().front().informative, localized("Error Common Tip"));
    EXPECT_TRUE(names(data.path() + "/PXFileTemplate").empty());
}

} // namespace
