// The configuration as the menu reads it: the main list from the file-backed suite when the
// file is unchanged (warm) and when it has to be parsed (cold), and the factory seeding.
#include "../fuzz/ScratchHome.h"
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "config/PXMenuManager.h"
#include "platform/linux/PlistFileSettings.h"
#include "support/Xdg.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>

namespace {

std::string groupFile() {
    return px::xdg::settingsFolder() + "/group.plist";
}

// A private home holding the factory configuration in the real settings file.
struct FactoryHome {
    px::fuzz::ScratchHome home;
    std::string data = home.folder("data");

    FactoryHome() {
        px::PXMenuManager::configure(std::make_shared<px::platform::PlistFileSettings>(groupFile()),
                                     data);
        px::PXDefaultData::setup();
    }
    ~FactoryHome() { px::PXMenuManager::resetToDefaultLocations(); }
};

void BM_MenuItemArrayWarm(benchmark::State& state) {
    FactoryHome home;
    for (auto _ : state) {
        auto items = px::PXMenuManager::menuItemArray();
        benchmark::DoNotOptimize(items.data());
    }
    state.counters["items"] = static_cast<double>(px::PXMenuManager::menuItemArray().size());
}
BENCHMARK(BM_MenuItemArrayWarm);

void BM_MenuItemArrayCold(benchmark::State& state) {
    FactoryHome home;
    for (auto _ : state) {
        px::PXMenuManager::configure(std::make_shared<px::platform::PlistFileSettings>(groupFile()),
                                     home.data);
        auto items = px::PXMenuManager::menuItemArray();
        benchmark::DoNotOptimize(items.data());
    }
}
BENCHMARK(BM_MenuItemArrayCold);

void BM_SetupOnEmptyFolder(benchmark::State& state) {
    px::fuzz::ScratchHome home;
    std::string data = home.folder("data");
    for (auto _ : state) {
        state.PauseTiming();
        std::remove(groupFile().c_str());
        px::PXMenuManager::configure(std::make_shared<px::platform::PlistFileSettings>(groupFile()),
                                     data);
        state.ResumeTiming();
        px::PXDefaultData::setup();
    }
    px::PXMenuManager::resetToDefaultLocations();
}
BENCHMARK(BM_SetupOnEmptyFolder)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
