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

// A store over the real settings file, read afresh.
px::PXMenuManager fileStore(const std::string& data) {
    return px::PXMenuManager(std::make_shared<px::platform::PlistFileSettings>(groupFile()), data);
}

// A private home holding the factory configuration in the real settings file.
struct FactoryHome {
    px::fuzz::ScratchHome home;
    std::string data = home.folder("data");
    px::PXMenuManager store = fileStore(data);

    FactoryHome() { px::PXDefaultData(store).setup(); }
};

void BM_MenuItemArrayWarm(benchmark::State& state) {
    FactoryHome home;
    for (auto _ : state) {
        auto items = home.store.menuItemArray();
        benchmark::DoNotOptimize(items.data());
    }
    state.counters["items"] = static_cast<double>(home.store.menuItemArray().size());
}
BENCHMARK(BM_MenuItemArrayWarm);

void BM_MenuItemArrayCold(benchmark::State& state) {
    FactoryHome home;
    for (auto _ : state) {
        auto items = fileStore(home.data).menuItemArray();
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
        px::PXMenuManager store = fileStore(data);
        state.ResumeTiming();
        px::PXDefaultData(store).setup();
    }
}
BENCHMARK(BM_SetupOnEmptyFolder)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
