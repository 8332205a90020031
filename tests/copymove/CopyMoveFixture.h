#pragma once

#include "TreeSnapshot.h"
#include "extension/ExtensionFixture.h"
#include "support_files/FakeUiLog.h"

namespace px::test {

// The real commands over fakes of the desktop, acting on real files in a temporary folder.
class CopyMoveFixture : public ExtensionFixture {
  protected:
    using Kind = platform::FakeUi::ProgressEvent::Kind;

    void SetUp() override {
        ExtensionFixture::SetUp();
        suite->setBool("is reviewed", true); // no review prompt among the answers
    }
    // The state dispatch leaves before an action runs: the selection (or, with none, the
    // folder shown) and whether the menu was opened on selected items.
    void prepare(std::vector<std::string> items, const std::string& shown) {
        const bool onItems = !items.empty();
        selectFor(sync, std::move(items), shown, onItems);
    }
    // "Copy to" or "Move to" with a destination item as dispatch passes it (an empty path asks).
    void sendTo(std::vector<std::string> items, const std::string& folder, bool isCopy) {
        prepare(std::move(items), work.path());
        auto destination = PXMenuItem::create("Current Directory");
        destination->path = folder;
        commands::moveOrCopy(sync.cx(), *destination, isCopy);
        queue::runUntilIdle();
    }
    int count(Kind kind) const {
        const auto& events = ui->progress();
        return static_cast<int>(std::count_if(events.begin(), events.end(),
                                              [&](const auto& e) { return e.kind == kind; }));
    }
    std::vector<std::string> collisionTips(const std::vector<std::string>& names) const {
        std::vector<std::string> tips;
        for (const auto& name : names)
            tips.push_back(localizedFormat("Same FileName Tip", name));
        return tips;
    }

    Session sync{*this};
};

} // namespace px::test
