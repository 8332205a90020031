// The plugins' menu service: its tree against pxmenu menu --json, the labels it makes unique,
// and the command an activation starts.
#include "extension/MenuService.h"

#include "config/MenuKeys.h"
#include "config/PXMenuManager.h"
#include "extension/MenuActivation.h"
#include "platform/linux/UserStore.h"
#include "support/LocalMounts.h"
#include "support_files/RecordingProgram.h"
#include "support_files/TestSupport.h"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>
#include <unistd.h>

namespace px::test {
namespace {

using Strings = std::vector<std::string>;

class MenuServiceTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(pxmenu({"setup"}).exitStatus, 0); }
    static ProcessResult pxmenu(Strings args) {
        args.insert(args.begin(), PXMENU_BINARY);
        return runProcess(args);
    }
    static nlohmann::json cliMenu(const MenuRequest& request) {
        Strings args{"menu",     "--json",       "--kind", std::to_string(request.kind),
                     "--target", request.target, "--"};
        args.insert(args.end(), request.paths.begin(), request.paths.end());
        return nlohmann::json::parse(pxmenu(args).out);
    }

    ScopedXdg xdg;
    TempDir work;
    // Opened after the XDG folders are set, on the settings `pxmenu setup` writes.
    std::shared_ptr<PXMenuManager> store = platform::openUserStore();
    MenuService service{[this] { return store; }};
};

void expectSameTree(const ServiceMenu& menu, const nlohmann::json& cli, const Strings& parent) {
    ASSERT_EQ(menu.size(), cli.size());
    for (std::size_t i = 0; i < menu.size(); ++i) {
        const auto& entry = menu[i];
        const auto& expected = cli[i];
        SCOPED_TRACE(entry.title);
        EXPECT_EQ(entry.title, expected.at("title").get<std::string>());
        EXPECT_EQ(entry.tag, expected.at("tag").get<std::int64_t>());
        EXPECT_EQ(entry.icon, expected.at("icon").get<std::string>());
        EXPECT_EQ(entry.separator, expected.at("separator").get<bool>());
        Strings keyPath = parent;
        keyPath.push_back(expected.at("key").get<std::string>());
        EXPECT_EQ(entry.keyPath, keyPath);
        EXPECT_FALSE(entry.tooltip.empty());
        expectSameTree(entry.children, expected.at("children"), keyPath);
    }
}

void collectSubmenuLabels(const ServiceMenu& menu, Strings& labels) {
    for (const auto& entry : menu) {
        if (entry.children.empty()) continue;
        labels.push_back(entry.label);
        collectSubmenuLabels(entry.children, labels);
    }
}

TEST_F(MenuServiceTest, TreeEqualsTheCommandLineMenu) {
    const std::string file = work.write("notes.txt", "text");
    const std::string other = work.write("b.md");
    work.mkdir("sub");
    // A favourite folder shows in three submenus under the same label.
    ASSERT_EQ(
        pxmenu({"config", "add", "common-path", work.path(), "path=" + work.path()}).exitStatus, 0);
    ASSERT_EQ(pxmenu({"config", "set", "pref", "common path next menu", "3"}).exitStatus, 0);
    struct Case {
        const char* name;
        MenuRequest request;
    };
    for (const auto& [name, request] :
         {Case{"one file", {{file}, work.path(), 0}},
          Case{"two files", {{file, other}, work.path(), 0}},
          Case{"background", {{}, work.path(), 1}}, Case{"toolbar", {{}, work.path(), 3}}}) {
        SCOPED_TRACE(name);
        ServiceMenu menu = service.menu(request);
        ASSERT_FALSE(menu.empty());
        expectSameTree(menu, cliMenu(request), {});
        Strings labels;
        collectSubmenuLabels(menu, labels);
        EXPECT_EQ(std::set<std::string>(labels.begin(), labels.end()).size(), labels.size());
        EXPECT_EQ(
            std::count_if(labels.begin(), labels.end(),
                          [&](const std::string& label) { return label.starts_with(work.path()); }),
            request.kind == 0 ? 3 : std::count(labels.begin(), labels.end(), work.path()));
    }
}

TEST_F(MenuServiceTest, AFavouriteFolderOf100000EntriesListsABoundedPart) {
    // In memory where the system has a tmpfs: a disk folder of this size takes minutes to make.
    char pattern[] = "/dev/shm/pxmenu-big-XXXXXX";
    const char* made = ::mkdtemp(pattern);
    const std::string big = made ? made : work.mkdir("big");
    struct Remove {
        std::string path;
        ~Remove() { std::filesystem::remove_all(path); }
    } remove{big};
    for (int i = 0; i < 100000; ++i)
        ::close(::open((big + "/f" + std::to_string(i)).c_str(), O_CREAT | O_WRONLY, 0644));
    ASSERT_EQ(pxmenu({"config", "add", "common-path", big, "path=" + big}).exitStatus, 0);
    ASSERT_EQ(pxmenu({"config", "set", "pref", "common path next menu", "3"}).exitStatus, 0);
    ServiceMenu menu = service.menu({{work.write("a.txt")}, work.path(), 0});
    auto favourites = std::find_if(menu.begin(), menu.end(), [](const ServiceEntry& entry) {
        return entry.keyPath.back() == "Common Path";
    });
    ASSERT_NE(favourites, menu.end());
    ASSERT_FALSE(favourites->children.empty());
    const auto& listing = favourites->children.front().children;
    // "Open Folder", twenty entries and "More Files".
    EXPECT_EQ(listing.size(), 22u);
    auto copyTo = std::find_if(menu.begin(), menu.end(), [](const ServiceEntry& entry) {
        return entry.keyPath.back() == "Copy to";
    });
    ASSERT_NE(copyTo, menu.end());
    EXPECT_LE(copyTo->children.size(), 3u);
}

TEST_F(MenuServiceTest, LoadingClearsTheCutListOnce) {
    const std::string file = work.write("cut.txt");
    store->updateMenuKey(menukey::kRightMenu, "Cut Paste", "cutPaths",
                         plist::Value::makeArray({plist::Value(file)}));
    auto cutPaths = [this] {
        for (const auto& item : store->menuItemArray())
            if (item->key == "Cut Paste") return item->cutPaths;
        return std::vector<std::string>{"no Cut Paste entry"};
    };
    ASSERT_EQ(cutPaths(), Strings{file});
    service.hostLoaded();
    EXPECT_TRUE(cutPaths().empty());
}

TEST_F(MenuServiceTest, LargeSelectionsTravelInAFile) {
    MenuRequest request{{work / "a", work / "b"}, work.path(), 0};
    struct Case {
        std::size_t budget;
        bool inFile;
    };
    for (const auto& [budget, inFile] : {Case{1 << 20, false}, Case{64, true}}) {
        SCOPED_TRACE(budget);
        ActivationCommand command =
            activationCommand(request, 514, {"Copy to", "/x"}, "/run/sel", budget);
        EXPECT_EQ(command.pathsInFile, inFile);
        Strings tail =
            inFile ? Strings{"--paths-from", "/run/sel"} : Strings{"--", work / "a", work / "b"};
        Strings expected{pxmenuProgram(), "run",     "--ui",  "gui",      "--tag",
                         "514",           "--kind",  "0",     "--target", work.path(),
                         "--key",         "Copy to", "--key", "/x"};
        expected.insert(expected.end(), tail.begin(), tail.end());
        EXPECT_EQ(command.argv, expected);
    }
}

TEST_F(MenuServiceTest, ActivationHandsASelectionBeyondArgMaxToPxmenu) {
    RecordingProgram recorder(work / "recorder", work / "record");
    ScopedEnv program("PXMENU_PROGRAM", recorder.path);
    const std::string file = work.write("notes.txt");
    MenuRequest request{{}, work.path(), 0};
    // Names long enough that the selection passes the system's argument limit.
    const std::string longName = "/" + std::string(200, 'n');
    for (int i = 0; i < 20000; ++i)
        request.paths.push_back(work.path() + longName + std::to_string(i));
    request.paths.push_back(file);
    ASSERT_FALSE(activate(request, 14, {"Hide Selected Files"}).isError());
    auto runs = RecordingProgram::recordedRuns(work / "record", 1);
    ASSERT_EQ(runs.size(), 1u);
    const Strings& arguments = runs.front().arguments;
    ASSERT_GE(arguments.size(), 2u);
    EXPECT_EQ(arguments[arguments.size() - 2], "--paths-from");
    const std::string pathsFile = arguments.back();
    std::string expected;
    for (const auto& path : request.paths)
        expected.append(path).push_back('\0');
    EXPECT_EQ(readFile(pathsFile), expected);
    // The command line reads the file as the selection and removes it.
    std::string small = work.write("small", file + std::string(1, '\0'));
    auto fromFile = pxmenu({"menu", "--json", "--target", work.path(), "--paths-from", small});
    EXPECT_EQ(fromFile.out, pxmenu({"menu", "--json", "--target", work.path(), file}).out);
    EXPECT_FALSE(exists(small));
    std::remove(pathsFile.c_str());
}

TEST(LocalMounts, NetworkSharesAreNotLocal) {
    const std::string table =
        "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
        "30 22 0:40 / /mnt/share rw - nfs4 server:/export rw\n"
        "31 22 0:41 / /mnt/share/local rw - tmpfs tmpfs rw\n"
        "32 22 0:42 / /home/u/remote rw - fuse.sshfs u@host: rw\n"
        "33 22 0:43 / /media/my\\040disk rw - cifs //nas/disk rw\n"
        "34 22 0:44 / /run/user/1000/gvfs rw - fuse.gvfsd-fuse gvfsd-fuse rw\n";
    struct Case {
        const char* path;
        bool local;
    };
    for (const auto& [path, local] :
         {Case{"/home/u/notes", true}, Case{"/mnt/share", false}, Case{"/mnt/share/a/b", false},
          Case{"/mnt/shared", true}, Case{"/mnt/share/local/x", true},
          Case{"/home/u/remote/x", false}, Case{"/media/my disk/x", false},
          Case{"/run/user/1000/gvfs/smb-share:server=nas/x", false}}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(mounts::isOnLocalMount(path, table), local);
    }
}

} // namespace
} // namespace px::test
