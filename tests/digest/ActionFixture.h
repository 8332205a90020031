#pragma once

#include "support_files/ActionsFixture.h"

namespace px::test {

// The real commands over fakes of the desktop, on a selection of files.
class ActionFixture : public ActionsFixture {
  protected:
    void select(std::vector<std::string> paths) { ActionsFixture::select(std::move(paths), "/"); }

    Session sync{*this};
};

} // namespace px::test
