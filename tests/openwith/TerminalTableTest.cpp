#include "platform/linux/TerminalTable.h"

#include <gtest/gtest.h>

using namespace px;

namespace {

using Args = std::vector<std::string>;

struct Row {
    std::string emulator;
    Args window;
    Args tab;
};

TEST(TerminalTable, EachEmulatorOpensAWindowOrATabAtTheFolder) {
    const std::string d = "/home/u/My Files";
    const std::vector<Row> rows{
        {"gnome-terminal",
         {"--window", "--working-directory=" + d},
         {"--tab", "--working-directory=" + d}},
        {"konsole", {"--workdir", d}, {"--new-tab", "--workdir", d}},
        {"xfce4-terminal",
         {"--window", "--working-directory", d},
         {"--tab", "--working-directory", d}},
        {"mate-terminal",
         {"--window", "--working-directory", d},
         {"--tab", "--working-directory", d}},
        {"tilix",
         {"--working-directory=" + d},
         {"--action=app-new-session", "--working-directory=" + d}},
        {"terminator", {"--working-directory=" + d}, {"--new-tab", "--working-directory=" + d}},
        {"kitty", {"--directory", d}, {"--directory", d}},
        {"alacritty", {"--working-directory", d}, {"--working-directory", d}},
        {"wezterm", {"start", "--cwd", d}, {"start", "--cwd", d}},
        {"foot", {"--working-directory=" + d}, {"--working-directory=" + d}},
        {"xterm", {}, {}},
    };
    ASSERT_EQ(terminal::knownEmulators().size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Row& row = rows[i];
        EXPECT_EQ(terminal::knownEmulators()[i], row.emulator) << "the order of the fallbacks";
        EXPECT_EQ(terminal::arguments(row.emulator, d, false), row.window) << row.emulator;
        EXPECT_EQ(terminal::arguments(row.emulator, d, true), row.tab) << row.emulator;
        EXPECT_EQ(terminal::supportsTabs(row.emulator), row.tab != row.window) << row.emulator;
    }
}

TEST(TerminalTable, AFolderNameIsOneArgumentWhateverItHolds) {
    for (const std::string folder : {"/tmp/$(touch pwned)", "/tmp/a\"; touch y; \"", "/tmp/`id`",
                                     "/tmp/{dir}", "/tmp/--window"}) {
        EXPECT_EQ(terminal::arguments("konsole", folder, true),
                  (Args{"--new-tab", "--workdir", folder}));
        EXPECT_EQ(terminal::arguments("foot", folder, false),
                  (Args{"--working-directory=" + folder}));
    }
}

TEST(TerminalTable, UnknownEmulatorsGetNoArguments) {
    EXPECT_TRUE(terminal::arguments("x-terminal-emulator", "/tmp", false).empty());
    EXPECT_TRUE(terminal::arguments("", "/tmp", true).empty());
    EXPECT_FALSE(terminal::supportsTabs("urxvt"));
}

TEST(TerminalTable, ProgramsAreKnownByTheirFileName) {
    EXPECT_EQ(terminal::emulatorOfProgram("/usr/bin/kitty"), "kitty");
    EXPECT_EQ(terminal::emulatorOfProgram("konsole"), "konsole");
    EXPECT_EQ(terminal::emulatorOfProgram("/usr/bin/gnome-terminal.wrapper"), "gnome-terminal");
    EXPECT_EQ(terminal::emulatorOfProgram("/usr/bin/x-terminal-emulator"), std::nullopt);
    EXPECT_EQ(terminal::emulatorOfProgram("/opt/kitty/bin/"), std::nullopt);
    EXPECT_EQ(terminal::emulatorOfProgram(".wrapper"), std::nullopt);
    EXPECT_EQ(terminal::emulatorOfProgram("/usr/bin/xterm-new"), std::nullopt);
}

} // namespace
