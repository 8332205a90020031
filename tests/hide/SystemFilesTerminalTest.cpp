#include "HideFixture.h"
#include "platform/fake/FakeServices.h"
#include "support/Xdg.h"

using namespace px;
using namespace px::test;

namespace {

using Names = std::vector<std::string>;

// The second alert of "System Hide Files" opens a terminal at the desktop folder.
class SystemFilesTerminalTest : public HideFixture {
  protected:
    void SetUp() override {
        HideFixture::SetUp();
        platform::current().services = services;
    }
    std::shared_ptr<platform::FakeServices> services = std::make_shared<platform::FakeServices>();
};

TEST_F(SystemFilesTerminalTest, ShowingHiddenFilesOpensTheTerminalAtTheDesktop) {
    ui->answers({"button 1000", "button 1000"});
    ASSERT_TRUE(onBackground(work.path(), "System Hide Files"));
    EXPECT_EQ(ui->alerts().size(), 2u);
    EXPECT_EQ(pasteboard->writes(),
              (Names{"gsettings set org.gtk.gtk4.Settings.FileChooser show-hidden true"}));
    ASSERT_EQ(services->requests().size(), 1u);
    EXPECT_EQ(services->requests()[0],
              (platform::FakeServices::Request{"New Terminal at Folder",
                                               {xdg::userDirectory("DESKTOP")}}));
}

TEST_F(SystemFilesTerminalTest, HidingHiddenFilesUsesFalseAndTheSecondTerminal) {
    ui->answers({"button 1001", "button 1001"});
    ASSERT_TRUE(onBackground(work.path(), "System Hide Files"));
    EXPECT_EQ(ui->alerts().at(1).message, localized("System Hide Files Hide"));
    EXPECT_EQ(pasteboard->string(),
              "gsettings set org.gtk.gtk4.Settings.FileChooser show-hidden false");
    ASSERT_EQ(services->requests().size(), 1u);
    EXPECT_EQ(services->requests()[0].name, "New iTerm2 Window Here");
}

TEST_F(SystemFilesTerminalTest, CancelInTheSecondAlertOpensNothing) {
    ui->answers({"button 1000", "button 1002"});
    ASSERT_TRUE(onBackground(work.path(), "System Hide Files"));
    EXPECT_TRUE(services->requests().empty());
    EXPECT_EQ(ui->alerts().size(), 2u);
}

} // namespace
