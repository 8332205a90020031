// One host's menu call through its plugin, as GNOME Files makes it: the built plugin loaded as
// a type module and asked for the items of 1, 1,000 and 10,000 selected files (fake file
// objects) on the factory configuration. Goals: 20 us, 1 ms and 10 ms median.
#include "../tests/plugins/harness-host.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <fstream>
#include <glib.h>
#include <string>
#include <vector>

namespace {

struct PluginHome {
    std::string root;
    std::vector<std::string> uris;

    PluginHome() {
        char folder[] = "/tmp/pxmenu-bench-XXXXXX";
        root = ::mkdtemp(folder);
        for (const char* name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
            ::setenv(name, root.c_str(), 1);
        std::string setup = std::string(PXMENU_BINARY) + " setup";
        if (std::system(setup.c_str()) != 0) std::abort();
        if (!harness_load(PLUGIN_PATH)) std::abort();
        for (int i = 0; i < 10000; ++i) {
            std::string path = root + "/file" + std::to_string(i) + ".txt";
            std::ofstream(path) << "x";
            char* uri = g_filename_to_uri(path.c_str(), nullptr, nullptr);
            uris.emplace_back(uri);
            g_free(uri);
        }
    }
    ~PluginHome() { std::system(("rm -rf '" + root + "'").c_str()); }
};

PluginHome& home() {
    static PluginHome instance;
    return instance;
}

void BM_FileItems(benchmark::State& state) {
    auto& uris = home().uris;
    std::vector<const char*> selection;
    for (int i = 0; i < state.range(0); ++i)
        selection.push_back(uris[static_cast<std::size_t>(i)].c_str());
    for (auto _ : state) {
        GList* items =
            harness_file_items(selection.data(), static_cast<guint>(selection.size()));
        benchmark::DoNotOptimize(items);
        g_list_free_full(items, g_object_unref);
    }
}
BENCHMARK(BM_FileItems)->Arg(1)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
