#include "extension/Request.h"

#include "platform/MemorySettings.h"
#include "support/FileHash.h"

#include <algorithm>

namespace px {

namespace {

std::vector<std::string> menuSelection(std::vector<std::string> selection,
                                       const std::string& target) {
    if (selection.empty() && filehash::isValid(target)) selection.push_back(target);
    std::erase(selection, "/");
    return selection;
}

} // namespace

Request::Request(Options options)
    : m_selection(menuSelection(std::move(options.selection), options.target)),
      m_target(std::move(options.target)), m_kind(options.kind),
      m_keyPath(std::move(options.keyPath)), m_offersReview(options.offersReview),
      m_onItems(!m_selection.empty() && m_kind == MenuKind::ContextualItems),
      m_services(options.services.withStandIns()), m_store(std::move(options.store)) {
    if (!m_store)
        m_store = std::make_shared<PXMenuManager>(std::make_shared<platform::MemorySettings>(), "");
    m_accessCache = std::make_unique<PXURLCache>(*m_services.standardDefaults);
    m_permits = std::make_unique<PXCheckPermit>(*m_services.ui, *m_accessCache);
}

} // namespace px
