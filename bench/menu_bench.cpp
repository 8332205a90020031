// Building the whole menu for one request on the factory configuration kept in the real
// settings file: one file, a thousand files, a folder's background, and common paths that hold
// tens of thousands of entries.
#include "../fuzz/ScratchHome.h"
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "config/PXMenuManager.h"
#include "extension/MenuBuilder.h"
#include "extension/Request.h"
#include "platform/Platform.h"
#include "platform/linux/PlistFileSettings.h"
#include "support/Xdg.h"

#include <benchmark/benchmark.h>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace {

std::size_t countEntries(const px::Menu& menu) {
    std::size_t total = menu.size();
    for (const auto& entry : menu)
        total += countEntries(entry.children);
    return total;
}

void touch(const std::string& path) {
    std::ofstream(path) << "x";
}

// The factory configuration in a private home, and the files the benchmarks select. Made
// once: the benchmark functions run several times each, and the large folders take seconds.
struct MenuHome {
    px::fuzz::ScratchHome home;
    std::string data = home.folder("data");
    std::string work = home.folder("work");
    std::shared_ptr<px::PXMenuManager> store =
        std::make_shared<px::PXMenuManager>(std::make_shared<px::platform::PlistFileSettings>(
                                                px::xdg::settingsFolder() + "/group.plist"),
                                            data);
    std::vector<std::string> oneFile = files("one", 1);
    std::vector<std::string> thousandFiles = files("thousand", 1000);

    MenuHome() { px::PXDefaultData(*store).setup(); }

    std::vector<std::string> files(const std::string& name, int count) const {
        std::string folder = home.folder(name);
        std::vector<std::string> paths;
        for (int i = 0; i < count; ++i) {
            paths.push_back(folder + "/file" + std::to_string(i) + ".txt");
            touch(paths.back());
        }
        return paths;
    }

    // Five folders of 10,000 entries each, every other one a folder.
    const std::vector<std::string>& largeFolders() {
        if (!m_large.empty()) return m_large;
        for (int p = 0; p < 5; ++p) {
            std::string name = "common" + std::to_string(p);
            std::string folder = home.folder(name);
            for (int i = 0; i < 10000; ++i) {
                std::string entry = "/entry" + std::to_string(i);
                if (i % 2 == 0)
                    home.folder(name + entry);
                else
                    touch(folder + entry + ".txt");
            }
            m_large.push_back(folder);
        }
        return m_large;
    }

  private:
    std::vector<std::string> m_large;
};

MenuHome& menuHome() {
    static MenuHome instance;
    return instance;
}

// The request a host makes for a right click on the selection in the work folder.
std::unique_ptr<px::Request> makeRequest(std::vector<std::string> selection, px::MenuKind kind) {
    auto controller =
        std::make_shared<px::platform::StaticFinderSyncController>(selection, menuHome().work);
    return std::make_unique<px::Request>(
        px::Request::Options{std::move(selection),
                             menuHome().work,
                             kind,
                             {},
                             {nullptr, nullptr, nullptr, controller, nullptr},
                             menuHome().store});
}

// Times the menu build alone, for one request made beforehand.
void runMenu(benchmark::State& state, std::vector<std::string> selection, px::MenuKind kind) {
    auto request = makeRequest(std::move(selection), kind);
    std::size_t entries = countEntries(px::buildMenu(*request).entries);
    for (auto _ : state) {
        px::BuiltMenu menu = px::buildMenu(*request);
        benchmark::DoNotOptimize(menu.entries.data());
    }
    state.counters["entries"] = static_cast<double>(entries);
}

void BM_MenuOneFile(benchmark::State& state) {
    runMenu(state, menuHome().oneFile, px::MenuKind::ContextualItems);
}
BENCHMARK(BM_MenuOneFile);

// A right click as the host handles it: the request is made, then its menu built.
void BM_RequestAndMenuOneFile(benchmark::State& state) {
    for (auto _ : state) {
        auto request = makeRequest(menuHome().oneFile, px::MenuKind::ContextualItems);
        px::BuiltMenu menu = px::buildMenu(*request);
        benchmark::DoNotOptimize(menu.entries.data());
    }
}
BENCHMARK(BM_RequestAndMenuOneFile);

void BM_MenuThousandFiles(benchmark::State& state) {
    runMenu(state, menuHome().thousandFiles, px::MenuKind::ContextualItems);
}
BENCHMARK(BM_MenuThousandFiles);

void BM_MenuFolderBackground(benchmark::State& state) {
    runMenu(state, {}, px::MenuKind::ContextualContainer);
}
BENCHMARK(BM_MenuFolderBackground);

// The five large folders as common paths listed in their submenus; one file selected, so copy
// and move list each path's subfolders too.
void BM_MenuLargeCommonPaths(benchmark::State& state) {
    const auto& folders = menuHome().largeFolders(); // configures the suite first
    auto& suite = menuHome().store->sharedDefaults();
    px::plist::Array paths;
    for (const auto& folder : folders)
        paths.push_back(px::plist::Value::makeDictionary({{"path", folder}}));
    suite.setObject(px::menukey::kCommonPath, px::plist::Value::makeArray(std::move(paths)));
    suite.setInteger(px::menukey::kCommonPathNextMenu, 3);
    runMenu(state, menuHome().oneFile, px::MenuKind::ContextualItems);
    suite.setObject(px::menukey::kCommonPath, px::plist::Value::makeArray());
}
BENCHMARK(BM_MenuLargeCommonPaths);

} // namespace

BENCHMARK_MAIN();
