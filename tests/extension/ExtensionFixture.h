#pragma once

#include "actions/Commands.h"
#include "actions/FullActions.h"
#include "config/MenuKeys.h"
#include "config/PXDefaultData.h"
#include "config/PXMenuManager.h"
#include "extension/Dispatch.h"
#include "extension/MenuBuilder.h"
#include "platform/MemorySettings.h"
#include "platform/fake/FakeApplications.h"
#include "platform/fake/FakePasteboard.h"
#include "platform/fake/FakeServices.h"
#include "platform/fake/FakeUi.h"
#include "support/Localization.h"
#include "support/Queues.h"
#include "support_files/TestSupport.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <set>
#include <sys/stat.h>

namespace px::test {

// A workspace that records what it was asked to open or show, and answers `answer`.
class RecordingWorkspace final : public platform::Workspace {
  public:
    bool answer = true;
    std::vector<std::string> opened;
    std::vector<std::string> revealed;

    bool openURL(const std::string& url) override {
        opened.push_back(url);
        return answer;
    }
    bool revealInFileManager(const std::string& path) override {
        revealed.push_back(path);
        return answer;
    }
    std::vector<std::string> mountedVolumes() override { return {}; }
    void observeMounts(std::function<void()>) override {}
};

// The real commands, except those a test records instead of running.
class RecordingActions : public MenuActions {
  public:
    RecordingActions(Request& request, std::vector<std::string>& into)
        : calls(into), m_full(request) {}
    std::vector<std::string>& calls;

    void openWithApp(const PXMenuItem& item) override { calls.push_back("app:" + item.appName); }
    void convert(const PXMenuItem& target, std::size_t index, const PXMenuItem& parent) override {
        calls.push_back("convert:" + target.key + ":" + std::to_string(index) + ":" + parent.key);
    }
    void moveOrCopy(const PXMenuItem& item, bool isCopy) override {
        calls.push_back(std::string(isCopy ? "copy:" : "move:") + item.key);
    }
    void deleteItems() override { calls.push_back("delete"); }
    void openSettings() override { calls.push_back("goset"); }
    void pickColor() override { calls.push_back("color"); }

    void createFile(const PXMenuItem& item) override { m_full.createFile(item); }
    void openCommonPath(const std::string& path, const PXMenuItem* entry) override {
        m_full.openCommonPath(path, entry);
    }
    void setFolderIcon(const PXMenuItem& item) override { m_full.setFolderIcon(item); }
    void copyFileInfo(const PXMenuItem& digest, std::size_t index) override {
        m_full.copyFileInfo(digest, index);
    }
    void openService(const std::string& serve, const std::optional<std::string>& path) override {
        m_full.openService(serve, path);
    }
    void copyPath() override { m_full.copyPath(); }
    void showSystemFiles(const PXMenuItem& item) override { m_full.showSystemFiles(item); }
    void changeVisibility(Visibility visibility) override { m_full.changeVisibility(visibility); }
    void lockUnlock() override { m_full.lockUnlock(); }
    void cutPaste(const PXMenuItem& item) override { m_full.cutPaste(item); }
    void compress() override { m_full.compress(); }
    void embedFolder() override { m_full.embedFolder(); }
    void unembedFolder() override { m_full.unembedFolder(); }
    void executeScript() override { m_full.executeScript(); }
    void extractIcon() override { m_full.extractIcon(); }
    void offerReview() override { m_full.offerReview(); }

  private:
    FullActions m_full;
};

// An in-memory configuration seeded with the factory menus, and fakes of the desktop:
// applications "Viewer" and "Warp" are installed, every service call and clipboard write is
// recorded, prompts are answered by the test.
class ExtensionFixture : public ::testing::Test {
  protected:
    // One request at a time, as a host makes them: the menu for the fixture's selection, the
    // chosen entry's command, or a command called directly. A new selection or kind starts a
    // new request; the commands' state (the progress window, a running job) lives as long as
    // the request.
    class Session {
      public:
        using Factory = std::function<std::unique_ptr<MenuActions>(Request&)>;
        explicit Session(ExtensionFixture& fixture, Factory factory = {})
            : m_fixture(fixture), m_factory(std::move(factory)) {}
        ~Session() { queue::runUntilIdle(); }

        // The menu for the selection; the next onMenuItemAction decodes its tags.
        Menu menuForMenuKind(MenuKind kind) {
            m_menu = buildMenu(request(kind));
            return m_menu->entries;
        }
        // The entry with the tag in the last menu built (built now when there is none).
        DispatchResult onMenuItemAction(std::int64_t tag) {
            if (!m_menu) menuForMenuKind(m_kind);
            return dispatch(*m_menu, tag, request(m_kind), actions());
        }
        // The request for the selection and the kind: the current one while neither changed.
        Request& request(MenuKind kind) {
            auto wanted = std::tie(m_fixture.m_paths, m_fixture.m_target, kind);
            if (!m_request || std::tie(m_paths, m_target, m_kind) != wanted) {
                queue::runUntilIdle();
                m_actions.reset();
                m_menu.reset();
                m_paths = m_fixture.m_paths;
                m_target = m_fixture.m_target;
                m_kind = kind;
                m_request = std::make_unique<Request>(Request::Options{
                    m_paths, m_target, kind, {}, m_fixture.services(), m_fixture.store});
            }
            return *m_request;
        }
        Request& request() { return request(m_kind); }
        MenuActions& actions() {
            request();
            if (!m_actions)
                m_actions =
                    m_factory ? m_factory(*m_request) : std::make_unique<FullActions>(*m_request);
            return *m_actions;
        }
        // The commands' shared state; for sessions running the real commands.
        ActionContext& cx() { return dynamic_cast<FullActions&>(actions()).context(); }
        void setKind(MenuKind kind) { request(kind); }
        // Ends the request; the next one takes the fixture's services as they are then.
        void restart() {
            queue::runUntilIdle();
            m_actions.reset();
            m_menu.reset();
            m_request.reset();
        }

      private:
        ExtensionFixture& m_fixture;
        Factory m_factory;
        std::vector<std::string> m_paths;
        std::string m_target;
        MenuKind m_kind = MenuKind::ContextualItems;
        std::unique_ptr<Request> m_request;
        std::unique_ptr<MenuActions> m_actions;
        std::optional<BuiltMenu> m_menu;
    };

    void SetUp() override {
        queue::markMainThread();
        PXDefaultData(*store).setup();
    }
    void TearDown() override { queue::runUntilIdle(); }

    void select(std::vector<std::string> paths, std::string target) {
        m_paths = std::move(paths);
        m_target = std::move(target);
    }
    // The selection and the kind of menu it was opened from.
    void selectFor(Session& session, std::vector<std::string> paths, std::string target,
                   bool onItems) {
        select(std::move(paths), std::move(target));
        session.setKind(onItems ? MenuKind::ContextualItems : MenuKind::ContextualContainer);
    }
    platform::Platform services() const {
        return {ui, pasteboard, workspace, nullptr, standardDefaults, apps, systemServices};
    }
    static const MenuEntry* find(const Menu& menu, const std::string& key) {
        auto it = std::find_if(menu.begin(), menu.end(),
                               [&](const MenuEntry& e) { return e.key == key; });
        return it == menu.end() ? nullptr : &*it;
    }
    static std::vector<std::string> keys(const Menu& menu) {
        std::vector<std::string> result;
        for (const auto& entry : menu)
            result.push_back(entry.key);
        return result;
    }
    void enable(const std::string& key) {
        store->updateMenuKey(menukey::kRightMenu, key, "disabled", plist::Value(false));
    }
    // A session whose recorded commands go to `calls`.
    Session::Factory recording() {
        return
            [this](Request& request) { return std::make_unique<RecordingActions>(request, calls); };
    }
    static PXMenuItem::Ptr appItem(const std::string& name) {
        auto item = PXMenuItem::create(name);
        item->appName = name;
        return item;
    }

    TempDir data;
    TempDir work;
    ScopedXdg xdg;
    std::shared_ptr<platform::MemorySettings> suite = std::make_shared<platform::MemorySettings>();
    std::shared_ptr<PXMenuManager> store = std::make_shared<PXMenuManager>(suite, data.path());
    std::shared_ptr<platform::MemorySettings> standardDefaults =
        std::make_shared<platform::MemorySettings>();
    std::shared_ptr<platform::FakeUi> ui = std::make_shared<platform::FakeUi>();
    std::shared_ptr<platform::FakeApplications> apps =
        std::make_shared<platform::FakeApplications>(std::set<std::string>{"Viewer", "Warp"});
    std::shared_ptr<platform::FakeServices> systemServices =
        std::make_shared<platform::FakeServices>();
    std::shared_ptr<platform::FakePasteboard> pasteboard =
        std::make_shared<platform::FakePasteboard>();
    std::shared_ptr<RecordingWorkspace> workspace = std::make_shared<RecordingWorkspace>();
    std::vector<std::string> calls;

  private:
    std::vector<std::string> m_paths;
    std::string m_target;
};

} // namespace px::test
