#pragma once

#include "config/PXMenuManager.h"
#include "config/PXURLCache.h"
#include "extension/PXCheckPermit.h"
#include "platform/Platform.h"

#include <memory>
#include <string>
#include <vector>

namespace px {

// Menu kinds a file manager asks for.
enum class MenuKind { ContextualItems = 0, ContextualContainer = 1, Sidebar = 2, Toolbar = 3 };

// One request from a host: what was selected where, which menu was opened, the entry chosen
// from it, and the services and store to use. The host makes it and hands it down; nothing
// below reads a selection, a service or a store from anywhere else.
class Request {
  public:
    struct Options {
        std::vector<std::string> selection; // absolute paths
        std::string target;                 // the folder being shown
        MenuKind kind = MenuKind::ContextualItems;
        // The keys from the chosen top-level entry down to the chosen one; empty when the host
        // does not know them.
        std::vector<std::string> keyPath;
        platform::Platform services;
        std::shared_ptr<PXMenuManager> store;
        // Whether the review prompt may be offered after a use (not where a person is working
        // in a terminal).
        bool offersReview = true;
    };

    // Takes the selection as the menu sees it: the target stands in for an empty selection,
    // and "/" is never selected. Missing services get stand-ins.
    explicit Request(Options options);
    Request(const Request&) = delete;
    Request& operator=(const Request&) = delete;

    const std::vector<std::string>& selection() const { return m_selection; }
    const std::string& target() const { return m_target; }
    MenuKind kind() const { return m_kind; }
    const std::vector<std::string>& keyPath() const { return m_keyPath; }
    bool offersReview() const { return m_offersReview; }
    // The menu was opened on selected items (rather than on a folder's background).
    bool onItems() const { return m_onItems; }
    bool onSingleItem() const { return m_onItems && m_selection.size() == 1; }

    PXMenuManager& store() const { return *m_store; }
    platform::Settings& preferences() const { return m_store->sharedDefaults(); }
    platform::Ui& ui() const { return *m_services.ui; }
    platform::Pasteboard& pasteboard() const { return *m_services.pasteboard; }
    platform::Workspace& workspace() const { return *m_services.workspace; }
    platform::Applications& applications() const { return *m_services.applications; }
    platform::Services& systemServices() const { return *m_services.services; }
    platform::FinderSyncController& controller() const { return *m_services.controller; }
    platform::Settings& standardDefaults() const { return *m_services.standardDefaults; }
    // The access checks and prompts, over the grants of this request's standard defaults.
    PXCheckPermit& permits() const { return *m_permits; }

  private:
    std::vector<std::string> m_selection;
    std::string m_target;
    MenuKind m_kind;
    std::vector<std::string> m_keyPath;
    bool m_offersReview;
    bool m_onItems;
    platform::Platform m_services;
    std::shared_ptr<PXMenuManager> m_store;
    std::unique_ptr<PXURLCache> m_accessCache;
    std::unique_ptr<PXCheckPermit> m_permits;
};

} // namespace px
