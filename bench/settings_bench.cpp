// The settings window: one edit's save through the store (a locked whole-file write of the
// real settings file), the same edit made in the window (save, list reload and menu preview),
// and building and painting the whole window once Qt is loaded.
#include "../fuzz/ScratchHome.h"
#include "ConfigStore.h"
#include "ListPage.h"
#include "Prompts.h"
#include "SettingsWindow.h"
#include "Texts.h"
#include "config/MenuKeys.h"
#include "config/SettingsStartup.h"
#include "platform/linux/UserStore.h"

#include <QApplication>
#include <QIcon>
#include <QListWidget>
#include <benchmark/benchmark.h>
#include <memory>

namespace {

QApplication& application() {
    static int argc = 1;
    static char name[] = "settings_bench";
    static char* argv[] = {name, nullptr};
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication app(argc, argv);
    px::settings::setUpIconTheme();
    return app;
}

// A private home with the factory configuration, and the window's store over it.
struct SettingsHome {
    px::fuzz::ScratchHome home;
    px::settings::ConfigStore store{px::platform::openUserStore()};
    px::settings::DialogPrompts prompts;

    SettingsHome() {
        application();
        (void)px::startup::prepareSettings(store.manager(), store.settingsFile());
    }
};

void BM_SettingsEditSave(benchmark::State& state) {
    SettingsHome home;
    bool enabled = false;
    for (auto _ : state) {
        home.store.setEnabled(px::menukey::kRightMenu, "Copy to", enabled);
        enabled = !enabled;
    }
}
BENCHMARK(BM_SettingsEditSave)->Unit(benchmark::kMillisecond);

void BM_SettingsEditInWindow(benchmark::State& state) {
    SettingsHome home;
    px::settings::SettingsWindow window(home.store, home.prompts);
    window.show();
    QListWidget* list = window.listPage(px::menukey::kRightMenu)->list();
    for (auto _ : state) {
        QListWidgetItem* row = list->item(5);
        row->setCheckState(row->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
        QApplication::processEvents(); // the list reload and the preview
    }
}
BENCHMARK(BM_SettingsEditInWindow)->Unit(benchmark::kMillisecond);

void BM_SettingsWindowFirstPaintWarm(benchmark::State& state) {
    SettingsHome home;
    for (auto _ : state) {
        px::settings::SettingsWindow window(home.store, home.prompts);
        benchmark::DoNotOptimize(window.grab());
    }
}
BENCHMARK(BM_SettingsWindowFirstPaintWarm)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
