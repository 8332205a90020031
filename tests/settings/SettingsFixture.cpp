#include "SettingsFixture.h"

#include "Texts.h"
#include "config/ListEntries.h"
#include "platform/linux/UserStore.h"
#include "plist/ItemFields.h"

#include <QIcon>

namespace px::test {

namespace {

// Deletes the application when the tests are over, so nothing of it is reported as leaked.
class QtEnvironment final : public ::testing::Environment {
  public:
    void TearDown() override { delete QApplication::instance(); }
};

[[maybe_unused]] auto* const environment = ::testing::AddGlobalTestEnvironment(new QtEnvironment);

} // namespace

QApplication& qtApplication() {
    if (auto* running = qobject_cast<QApplication*>(QApplication::instance())) return *running;
    static int argc = 1;
    static char name[] = "test_settings";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    auto* application = new QApplication(argc, argv);
    settings::setUpIconTheme();
    return *application;
}

void SettingsFixture::SetUp() {
    qtApplication();
    store = std::make_unique<settings::ConfigStore>(platform::openUserStore());
}

void SettingsFixture::TearDown() {
    window.reset();
    store.reset();
}

settings::SettingsWindow& SettingsFixture::openWindow() {
    window.reset();
    start = startup::prepareSettings(store->manager(), store->settingsFile());
    window = std::make_unique<settings::SettingsWindow>(*store, prompts);
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get())) << "keyboard tests need focus";
    return *window;
}

settings::ListPage& SettingsFixture::page(const char* menuKey) {
    if (!window) openWindow();
    auto* found = window->listPage(menuKey);
    EXPECT_NE(found, nullptr) << menuKey;
    window->showPage(window->indexOf(found));
    return *found;
}

int SettingsFixture::rowOf(settings::ListPage& list, const std::string& key) {
    for (int row = 0; row < list.list()->count(); ++row)
        if (list.list()->item(row)->data(Qt::UserRole).toString().toStdString() == key) return row;
    return -1;
}

QListWidgetItem* SettingsFixture::select(settings::ListPage& list, const std::string& key) {
    const int row = rowOf(list, key);
    EXPECT_GE(row, 0) << key;
    list.list()->setFocus();
    list.list()->setCurrentRow(row);
    QTest::qWait(10);
    return row < 0 ? nullptr : list.list()->item(row);
}

void SettingsFixture::key(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(widget, key, modifiers);
    // A short wait runs what the key started, closed editors going included: a list opens no
    // new editor while a closed one is still there.
    QTest::qWait(10);
}

ProcessResult SettingsFixture::pxmenu(std::vector<std::string> args) {
    args.insert(args.begin(), PXMENU_BINARY);
    return runProcess(args);
}

nlohmann::json SettingsFixture::menuForFile() {
    const std::string file = work.write("report.txt", "text");
    auto result = pxmenu({"menu", "--json", "--target", work.path(), "--", file});
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    return nlohmann::json::parse(result.out);
}

std::vector<std::string> SettingsFixture::keys(const nlohmann::json& menu) {
    std::vector<std::string> result;
    for (const auto& item : menu)
        result.push_back(item.at("key").get<std::string>());
    return result;
}

const nlohmann::json* SettingsFixture::entry(const nlohmann::json& menu, const std::string& key) {
    for (const auto& item : menu)
        if (item.at("key") == key) return &item;
    return nullptr;
}

plist::Value SettingsFixture::settingsFile() {
    auto read = plist::readFile(xdg.configHome() + "/pxmenu/group.plist");
    EXPECT_FALSE(read.isError());
    return read.isError() ? plist::Value() : read.releaseValue();
}

plist::Value SettingsFixture::storedEntry(const char* menuKey, const std::string& key) {
    plist::Value list = settingsFile().get(menuKey);
    if (list.isArray())
        for (const auto& item : list.array())
            if (entries::keyOf(item) == key) return item;
    return {};
}

} // namespace px::test
