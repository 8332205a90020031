// "New File" entries through `pxmenu run` with scripted answers.
#include "CliFixture.h"

using namespace px::test;

namespace {

class NewFileCliTest : public CliFixture {
  protected:
    void SetUp() override { setUpMenus(); }
    // Runs the "New File" child with the key in the folder's background menu.
    ProcessResult make(const std::string& key, const std::string& answers) {
        return runEntry({"New File", key}, request(1, folder), answers);
    }

    std::string folder = work.mkdir("place");
};

TEST_F(NewFileCliTest, CollisionsNumberStopAndReplace) {
    auto first = make("txt", "");
    ASSERT_EQ(first.exitStatus, 0) << first.err;
    EXPECT_EQ(first.out, "");
    ASSERT_EQ(make("txt", "button 1000\n").exitStatus, 0);
    auto third = make("txt", "button 1000\n");
    ASSERT_EQ(third.exitStatus, 0);
    auto prompt = transcript(third.out);
    ASSERT_EQ(prompt.size(), 1u);
    EXPECT_EQ(prompt[0].at("buttons"), nlohmann::json({"Keep Both", "Stop", "Replace"}));
    EXPECT_NE(prompt[0].at("informative").get<std::string>().find("Untitled.txt"),
              std::string::npos);
    EXPECT_EQ(listing(folder), (Strings{"Untitled-1.txt", "Untitled-2.txt", "Untitled.txt"}));

    std::ofstream(folder + "/Untitled.txt") << "kept";
    ASSERT_EQ(make("txt", "button 1001\n").exitStatus, 0);
    EXPECT_EQ(readFile(folder + "/Untitled.txt"), "kept");
    ASSERT_EQ(make("txt", "button 1002\n").exitStatus, 0);
    EXPECT_EQ(readFile(folder + "/Untitled.txt"), "");
    // A prompt with no answer left ends the run with status 3 and changes nothing.
    EXPECT_EQ(make("txt", "").exitStatus, 3);
    EXPECT_EQ(listing(folder).size(), 3u);
}

TEST_F(NewFileCliTest, TheSavePanelWithTheTypeChooser) {
    auto templates = nlohmann::json::parse(pxmenu({"config", "show", "array new file"}).out);
    int xlsx = -1;
    for (std::size_t i = 0; i < templates.size(); ++i)
        if (templates[i].at("key") == "xlsx") xlsx = static_cast<int>(i);
    ASSERT_GT(xlsx, 0);
    const std::string odd = "Q3 \"plan\" $(touch pwned) `id`";
    auto saved =
        make("New File From Window", "choose " + std::to_string(xlsx) + "\nsave " + odd + "\n");
    ASSERT_EQ(saved.exitStatus, 0) << saved.err;
    auto lines = transcript(saved.out);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].at("prompt"), "save");
    EXPECT_EQ(lines[0].at("name"), "Untitled");
    EXPECT_EQ(lines[0].at("directory"), folder);
    EXPECT_EQ(listing(folder), Strings{odd + ".xlsx"});
    EXPECT_FALSE(exists(folder + "/pwned") || exists(work / "pwned"));
    EXPECT_EQ(readFile(folder + "/" + odd + ".xlsx"),
              readFile(std::string(PX_SOURCE_DIR) + "/data/templates/Untitled.xlsx"));
    EXPECT_EQ(make("New File From Window", "cancel\n").exitStatus, 0);
    EXPECT_EQ(make("New File From Window", "choose 0\n").exitStatus, 3)
        << "the chooser does not offer its own entry";
    EXPECT_EQ(listing(folder).size(), 1u);
}

TEST_F(NewFileCliTest, AddToFileTemplateThenANewFileFromIt) {
    std::string source = folder + "/Meeting notes.md";
    std::ofstream(source) << "# Agenda\n";
    auto added = runEntry({"New File", "Add to File Template"}, request(0, folder, {source}));
    ASSERT_EQ(added.exitStatus, 0) << added.err;
    EXPECT_EQ(withKey(added.out, "success"), std::vector{nlohmann::json({{"success", "Done"}})});

    auto templates = nlohmann::json::parse(pxmenu({"config", "show", "array new file"}).out);
    const auto& entry = templates.back();
    const std::string key = entry.at("key");
    EXPECT_EQ(entry.at("displayName"), "Meeting notes");
    EXPECT_EQ(entry.at("ext"), "md");
    const std::string stored = entry.at("templatePath");
    EXPECT_EQ(stored, xdg.dataHome() + "/pxmenu/PXFileTemplate/" + key);
    EXPECT_EQ(readFile(stored), "# Agenda\n");

    std::filesystem::remove(source);
    ASSERT_EQ(make(key, "").exitStatus, 0);
    EXPECT_EQ(readFile(folder + "/Untitled.md"), "# Agenda\n");
    ASSERT_EQ(pxmenu({"config", "remove", "array new file", key}).exitStatus, 0);
    EXPECT_FALSE(exists(stored));
}

TEST_F(NewFileCliTest, TheUsersTemplatesFolderIsOfferedAfterTheFactoryTemplates) {
    std::filesystem::create_directories(xdg.home() + "/Templates");
    std::ofstream(xdg.home() + "/Templates/Invoice.ods") << "ods";
    const Strings children = keys(entry(menuJson(request(1, folder)), "New File")->at("children"));
    ASSERT_GE(children.size(), 2u);
    EXPECT_EQ(children[children.size() - 2], "Invoice.ods") << "before Settings";
    ASSERT_EQ(make("Invoice.ods", "").exitStatus, 0);
    EXPECT_EQ(readFile(folder + "/Invoice.ods"), "ods");
}

} // namespace
