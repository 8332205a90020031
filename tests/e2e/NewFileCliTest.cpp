#include "CliFixture.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

using namespace px::test;

namespace {

class NewFileCliTest : public CliFixture {
  protected:
    void SetUp() override {
        ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
        ASSERT_EQ(pxmenu({"config", "set", "pref", "is reviewed", "true"}).exitStatus, 0);
        folder = work.mkdir("place");
    }
    // The tag of the "New File" child with the key, in the menu for the selection.
    int tagOf(const std::string& key, std::vector<std::string> request) {
        auto menu = menuJson(request);
        const auto* newFile = entry(menu, "New File");
        if (!newFile) return -1;
        const auto* child = entry(newFile->at("children"), key);
        return child ? child->at("tag").get<int>() : -1;
    }
    int tagInFolder(const std::string& key) {
        return tagOf(key, {"--kind", "1", "--target", folder});
    }
    // Runs the entry in the folder's background menu with the answers given.
    ProcessResult run(int tag, const std::string& answers,
                      std::vector<std::string> selection = {}) {
        std::string script = work.write("script-" + std::to_string(++m_runs), answers);
        std::vector<std::string> args{"run", "--tag", std::to_string(tag), "--ui",
                                      "script:" + script};
        if (selection.empty()) {
            args.insert(args.end(), {"--kind", "1", "--target", folder});
        } else {
            args.push_back("--");
            args.insert(args.end(), selection.begin(), selection.end());
        }
        return pxmenu(args);
    }
    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const auto& item : std::filesystem::directory_iterator(folder))
            result.push_back(item.path().filename().string());
        std::sort(result.begin(), result.end());
        return result;
    }

    std::string folder;

  private:
    int m_runs = 0;
};

TEST_F(NewFileCliTest, CollisionsNumberStopAndReplace) {
    const int txt = tagInFolder("txt");
    ASSERT_GT(txt, 0);
    auto first = run(txt, "");
    ASSERT_EQ(first.exitStatus, 0) << first.err;
    EXPECT_EQ(first.out, "");
    ASSERT_EQ(run(txt, "button 1000\n").exitStatus, 0);
    auto third = run(txt, "button 1000\n");
    ASSERT_EQ(third.exitStatus, 0);
    auto prompt = transcript(third.out);
    ASSERT_EQ(prompt.size(), 1u);
    EXPECT_EQ(prompt[0].at("prompt"), "alert");
    EXPECT_EQ(prompt[0].at("buttons"), nlohmann::json({"Keep Both", "Stop", "Replace"}));
    EXPECT_NE(prompt[0].at("informative").get<std::string>().find("Untitled.txt"),
              std::string::npos);
    EXPECT_EQ(names(),
              (std::vector<std::string>{"Untitled-1.txt", "Untitled-2.txt", "Untitled.txt"}));

    std::ofstream(folder + "/Untitled.txt") << "kept";
    ASSERT_EQ(run(txt, "button 1001\n").exitStatus, 0);
    EXPECT_EQ(readFile(folder + "/Untitled.txt"), "kept");
    ASSERT_EQ(run(txt, "button 1002\n").exitStatus, 0);
    EXPECT_EQ(readFile(folder + "/Untitled.txt"), "");
    EXPECT_EQ(names().size(), 3u);
    // A prompt with no answer left ends the run with status 3 and changes nothing.
    EXPECT_EQ(run(txt, "").exitStatus, 3);
    EXPECT_EQ(names().size(), 3u);
}

TEST_F(NewFileCliTest, TheSavePanelWithTheTypeChooser) {
    const int window = tagInFolder("New File From Window");
    ASSERT_GT(window, 0);
    auto listed = pxmenu({"config", "show", "array new file"});
    auto templates = nlohmann::json::parse(listed.out);
    int xlsx = -1;
    for (std::size_t i = 0; i < templates.size(); ++i)
        if (templates[i].at("key") == "xlsx") xlsx = static_cast<int>(i);
    ASSERT_GT(xlsx, 0);
    const std::string odd = "Q3 \"plan\" $(touch pwned) `id`";
    auto saved = run(window, "choose " + std::to_string(xlsx) + "\nsave " + odd + "\n");
    ASSERT_EQ(saved.exitStatus, 0) << saved.err;
    auto lines = transcript(saved.out);
    ASSERT_EQ(lines.size(), 1u);
    EXPECT_EQ(lines[0].at("prompt"), "save");
    EXPECT_EQ(lines[0].at("name"), "Untitled");
    EXPECT_EQ(lines[0].at("directory"), folder);
    EXPECT_EQ(names(), std::vector<std::string>{odd + ".xlsx"});
    EXPECT_FALSE(exists(folder + "/pwned") || exists(work / "pwned"));
    auto check =
        runProcess({"python3", "-c",
                    "import sys, zipfile; z = zipfile.ZipFile(sys.argv[1]); "
                    "assert 'xl/worksheets/sheet1.xml' in z.namelist(); print(len(z.namelist()))",
                    folder + "/" + odd + ".xlsx"});
    EXPECT_EQ(check.exitStatus, 0) << check.err;
    EXPECT_EQ(run(window, "cancel\n").exitStatus, 0);
    EXPECT_EQ(run(window, "choose 0\n").exitStatus, 3)
        << "the chooser does not offer its own entry";
    EXPECT_EQ(names().size(), 1u);
}

TEST_F(NewFileCliTest, AddToFileTemplateThenANewFileFromIt) {
    std::string source = folder + "/Meeting notes.md";
    std::ofstream(source) << "# Agenda\n";
    const int add = tagOf("Add to File Template", {"--", source});
    ASSERT_GT(add, 0);
    auto added = run(add, "", {source});
    ASSERT_EQ(added.exitStatus, 0) << added.err;
    auto lines = transcript(added.out);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back(), nlohmann::json({{"success", "Done"}}));

    auto templates = nlohmann::json::parse(pxmenu({"config", "show", "array new file"}).out);
    const auto& entry = templates.back();
    EXPECT_EQ(entry.at("displayName"), "Meeting notes");
    EXPECT_EQ(entry.at("ext"), "md");
    const std::string stored = entry.at("templatePath");
    EXPECT_EQ(stored,
              xdg.dataHome() + "/pxmenu/PXFileTemplate/" + entry.at("key").get<std::string>());
    EXPECT_EQ(readFile(stored), "# Agenda\n");
    if (entry.contains("iconPath")) {
        EXPECT_TRUE(exists(entry.at("iconPath")));
    }

    const int fromTemplate = tagInFolder(entry.at("key"));
    ASSERT_GT(fromTemplate, 0);
    ASSERT_EQ(run(fromTemplate, "").exitStatus, 0);
    EXPECT_EQ(readFile(folder + "/Untitled.md"), "# Agenda\n");
    ASSERT_EQ(pxmenu({"config", "remove", "array new file", entry.at("key")}).exitStatus, 0);
    EXPECT_FALSE(exists(stored));
}

TEST_F(NewFileCliTest, TheUsersTemplatesFolderIsOffered) {
    std::filesystem::create_directories(xdg.home() + "/Templates");
    std::ofstream(xdg.home() + "/Templates/Invoice.ods") << "ods";
    std::ofstream(xdg.home() + "/Templates/.secret") << "no";
    auto menu = menuJson({"--kind", "1", "--target", folder});
    auto children = keys(entry(menu, "New File")->at("children"));
    auto invoice = std::find(children.begin(), children.end(), "Invoice.ods");
    ASSERT_NE(invoice, children.end());
    EXPECT_EQ(std::next(invoice), children.end() - 1)
        << "after the factory templates, before Settings";
    EXPECT_EQ(std::count(children.begin(), children.end(), ".secret"), 0);
    ASSERT_EQ(run(tagInFolder("Invoice.ods"), "").exitStatus, 0);
    ASSERT_EQ(run(tagInFolder("Invoice.ods"), "button 1000\n").exitStatus, 0);
    EXPECT_EQ(names(), (std::vector<std::string>{"Invoice-1.ods", "Invoice.ods"}));
    EXPECT_EQ(readFile(folder + "/Invoice-1.ods"), "ods");
}

} // namespace
