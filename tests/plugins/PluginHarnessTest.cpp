// One host's plugin loaded in this process as the host loads it, fed fake file objects: its
// items against the command line's menu, and what choosing an entry starts, replayed through
// the real pxmenu.
#include "HostHarness.h"
#include "support_files/RecordingProgram.h"
#include "support_files/TestSupport.h"

#include <algorithm>
#include <filesystem>
#include <glib.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>

namespace px::test {
namespace {

// The item reached through the labels, one per level.
const HostItem* find(const HostItems& items, const std::vector<std::string>& labels) {
    const HostItems* level = &items;
    const HostItem* found = nullptr;
    for (const auto& label : labels) {
        auto it = std::find_if(level->begin(), level->end(),
                               [&](const HostItem& item) { return item.label == label; });
        if (it == level->end()) return nullptr;
        found = &*it;
        level = &it->children;
    }
    return found;
}

std::string withoutInvisibleMarks(std::string label) {
    const std::string mark = "\u200B";
    for (auto at = label.find(mark); at != std::string::npos; at = label.find(mark))
        label.erase(at, mark.size());
    return label;
}

// Depth and title of every entry a host shows: the command line's untitled separators are
// left out, as hosts without separator items leave them out.
using Outline = std::vector<std::pair<int, std::string>>;

void outlineOf(const HostItems& items, int depth, Outline& out) {
    for (const auto& item : items) {
        if (item.separator) continue;
        out.emplace_back(depth, withoutInvisibleMarks(item.label));
        outlineOf(item.children, depth + 1, out);
    }
}

void outlineOf(const nlohmann::json& menu, int depth, Outline& out) {
    for (const auto& entry : menu) {
        std::string title = entry.at("title").get<std::string>();
        if (entry.at("separator").get<bool>() && title.empty()) continue;
        out.emplace_back(depth, title);
        outlineOf(entry.at("children"), depth + 1, out);
    }
}

// What every host menu must hold: labels in UTF-8, tooltips, unique item names, submenu labels
// unique in the whole menu, icons that exist.
void checkItems(const HostItems& items, std::set<std::string>& names,
                std::set<std::string>& submenuLabels) {
    for (const auto& item : items) {
        SCOPED_TRACE(item.label);
        EXPECT_TRUE(g_utf8_validate(item.label.c_str(), -1, nullptr));
        EXPECT_FALSE(item.tooltip.empty());
        if (!item.separator) {
            EXPECT_TRUE(names.insert(item.name).second) << "duplicate name " << item.name;
        }
        if (!item.icon.empty() && item.icon.front() == '/') {
            EXPECT_TRUE(exists(item.icon)) << item.icon;
        }
        if (item.children.empty()) continue;
        EXPECT_TRUE(submenuLabels.insert(item.label).second) << "submenu label twice";
        checkItems(item.children, names, submenuLabels);
    }
}

void checkTree(const HostItems& items) {
    std::set<std::string> names, submenuLabels;
    checkItems(items, names, submenuLabels);
    bool anyIcon = std::any_of(items.begin(), items.end(),
                               [](const HostItem& item) { return !item.icon.empty(); });
    EXPECT_TRUE(anyIcon);
}

std::string uriOf(const std::string& path) {
    char* uri = g_filename_to_uri(path.c_str(), nullptr, nullptr);
    std::string result = uri ? uri : "";
    g_free(uri);
    return result;
}

class PluginHarness : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        // Loaded once, as a file manager loads it: no configuration exists yet.
        ScopedXdg fresh;
        TempDir folder;
        RecordingProgram recorder(folder / "pxmenu", folder / "record");
        ScopedEnv program("PXMENU_PROGRAM", recorder.path);
        loaded = loadHostPlugin(PLUGIN_PATH);
        auto runs = RecordingProgram::recordedRuns(folder / "record", 1);
        setupRequested = runs.size() == 1 && runs.front().arguments == Strings{"setup"};
    }
    static void TearDownTestSuite() { delete xdg; }

    void SetUp() override {
        ASSERT_TRUE(loaded) << "cannot load " << PLUGIN_PATH;
        // The plugin, like its file manager, keeps the locations it saw first: every test
        // starts again from the factory settings in the same folders.
        if (!xdg) xdg = new ScopedXdg;
        std::filesystem::remove_all(xdg->configHome() + "/pxmenu");
        ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
        ASSERT_EQ(pxmenu({"config", "set", "pref", "is reviewed", "true"}).exitStatus, 0);
    }

    using Strings = std::vector<std::string>;

    static ProcessResult pxmenu(Strings args) {
        args.insert(args.begin(), PXMENU_BINARY);
        return runProcess(args);
    }
    static nlohmann::json cliMenu(int kind, const std::string& target, const Strings& paths) {
        Strings args{"menu", "--json", "--kind", std::to_string(kind), "--target", target, "--"};
        args.insert(args.end(), paths.begin(), paths.end());
        return nlohmann::json::parse(pxmenu(args).out);
    }
    static HostItems fileItems(const Strings& paths) {
        Strings uris;
        for (const auto& path : paths)
            uris.push_back(uriOf(path));
        return hostFileItems(uris);
    }
    void expectSameAsCommandLine(const HostItems& items, const nlohmann::json& cli) {
        Outline host, expected;
        outlineOf(items, 0, host);
        outlineOf(cli, 0, expected);
        EXPECT_EQ(host, expected);
    }
    // The arguments the plugin started pxmenu with when the item was chosen.
    Strings activate(const HostItem& item) {
        item.activate();
        auto runs = RecordingProgram::recordedRuns(recordFile, ++m_runs);
        if (runs.size() < m_runs) return {};
        return runs.back().arguments;
    }
    // The recorded arguments run by the real pxmenu with scripted answers instead of the
    // graphical hand-off.
    ProcessResult replay(Strings arguments) {
        for (std::size_t i = 0; i + 1 < arguments.size(); ++i)
            if (arguments[i] == "--ui") arguments[i + 1] = "script:" + work.write("answers");
        return pxmenu(arguments);
    }

    static inline bool loaded = false;
    static inline bool setupRequested = false;
    static inline ScopedXdg* xdg = nullptr;
    TempDir work;
    std::string recordFile = work / "record";
    RecordingProgram recorder{work / "recorder", recordFile};
    ScopedEnv program{"PXMENU_PROGRAM", recorder.path};
    std::size_t m_runs = 0;
};

TEST_F(PluginHarness, LoadingWithoutConfigurationStartsSetup) {
    EXPECT_TRUE(setupRequested);
}

TEST_F(PluginHarness, ItemsMatchTheCommandLineMenu) {
    const std::string file = work.write("notes.txt", "text");
    std::string many = work.mkdir("many");
    Strings thousand;
    for (int i = 0; i < 1000; ++i)
        thousand.push_back(work.write("many/f" + std::to_string(i) + ".md"));
    struct Case {
        const char* name;
        Strings paths;
    };
    for (const auto& [name, paths] : {Case{"one file", {file}}, Case{"1,000 files", thousand}}) {
        SCOPED_TRACE(name);
        HostItems items = fileItems(paths);
        checkTree(items);
        std::string folder = paths.front().substr(0, paths.front().rfind('/'));
        expectSameAsCommandLine(items, cliMenu(0, folder, paths));
    }
    std::vector<int> folderKinds{1};
    if (kHostHasToolbar) folderKinds.push_back(3);
    for (int kind : folderKinds) {
        SCOPED_TRACE("folder kind " + std::to_string(kind));
        HostItems items = hostFolderItems(uriOf(work.path()), kind);
        ASSERT_FALSE(items.empty());
        checkTree(items);
        expectSameAsCommandLine(items, cliMenu(kind, work.path(), {}));
    }
}

TEST_F(PluginHarness, ChoosingAnEntryStartsPxmenuWithTheRequest) {
    const std::string name = "caf\xe9 $(touch x).txt"; // not UTF-8
    const std::string file = work.write(name, "text");
    HostItems items = fileItems({file});
    checkTree(items);
    const HostItem* hide = find(items, {"Hide Selected Files"});
    ASSERT_NE(hide, nullptr);
    Strings arguments = activate(*hide);
    std::string tag = std::to_string(cliMenu(0, work.path(), {file})[0].at("tag").get<int>());
    Strings prefix{"run", "--ui", "gui", "--tag"};
    ASSERT_GT(arguments.size(), 12u);
    EXPECT_EQ(Strings(arguments.begin(), arguments.begin() + 4), prefix);
    EXPECT_EQ(Strings(arguments.end() - 8, arguments.end()),
              (Strings{"--kind", "0", "--target", work.path(), "--key", "Hide Selected Files", "--",
                       file}));
    ProcessResult run = replay(arguments);
    EXPECT_EQ(run.exitStatus, 0) << run.err;
    EXPECT_NE(readFile(work / ".hidden").find(name), std::string::npos);
    EXPECT_FALSE(exists(work / "x"));
}

TEST_F(PluginHarness, StaleKeyPathDoesNothing) {
    const std::string file = work.write("a.txt");
    HostItems items = fileItems({file});
    const HostItem* hide = find(items, {"Hide Selected Files"});
    ASSERT_NE(hide, nullptr);
    Strings arguments = activate(*hide);
    auto key = std::find(arguments.begin(), arguments.end(), "Hide Selected Files");
    ASSERT_NE(key, arguments.end());
    *key = "Unhide All Files";
    ProcessResult run = replay(arguments);
    EXPECT_EQ(run.exitStatus, 5);
    EXPECT_FALSE(exists(work / ".hidden"));
}

TEST_F(PluginHarness, BadInputGivesAMenuOrNoneWithoutCriticals) {
    const std::string file = work.write("a.txt");
    struct Case {
        const char* name;
        std::string settings;
    };
    const std::string settings = xdg->configHome() + "/pxmenu/group.plist";
    for (const auto& [name, contents] :
         {Case{"damaged", "<?xml version=\"1.0\"?><plist><dict><key>array"},
          Case{"wrong types", "<plist><dict><key>array right menu</key><string>x</string>"
                              "<key>pref check1</key><array/></dict></plist>"},
          Case{"huge", std::string(8 << 20, '<')}}) {
        SCOPED_TRACE(name);
        work.write("settings.plist", contents);
        std::rename((work / "settings.plist").c_str(), settings.c_str());
        HostItems items = fileItems({file});
        std::set<std::string> names, labels;
        checkItems(items, names, labels);
    }
    std::filesystem::remove_all(xdg->configHome() + "/pxmenu");
    ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0);
    Strings tenThousand;
    for (int i = 0; i < 10000; ++i)
        tenThousand.push_back(work / ("gone" + std::to_string(i) + ".txt"));
    for (const auto& paths : {Strings{work / "gone.txt"}, tenThousand}) {
        SCOPED_TRACE(std::to_string(paths.size()) + " vanished files");
        HostItems vanished = fileItems(paths);
        std::set<std::string> names, labels;
        checkItems(vanished, names, labels);
        EXPECT_NE(find(vanished, {"Copy Path"}), nullptr);
    }
}

TEST_F(PluginHarness, OnlyLocalFilesGetAMenu) {
    for (const std::string uri : {"trash:///a.txt", "sftp://example.invalid/home/a.txt"}) {
        SCOPED_TRACE(uri);
        EXPECT_TRUE(hostFileItems({uri}).empty());
        EXPECT_TRUE(hostFolderItems(uri, 1).empty());
    }
}

} // namespace
} // namespace px::test
