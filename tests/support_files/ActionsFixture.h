#pragma once

#include "extension/ExtensionFixture.h"
#include "support/PXFile.h"
#include "support_files/FakeUiLog.h"

namespace px::test {

// The extension's actions run for real against the fixture's fakes of the desktop.
class ActionsFixture : public ExtensionFixture {
  protected:
    static std::string fileUrl(const std::string& path) { return PXFile(path).url(); }
    std::vector<std::string> alertTexts() const { return test::alertTexts(*ui); }
};

} // namespace px::test
