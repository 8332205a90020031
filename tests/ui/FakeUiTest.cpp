#include "platform/fake/FakeUi.h"

#include <gtest/gtest.h>

namespace px::platform {
namespace {

using Kind = FakeUi::ProgressEvent::Kind;

TEST(FakeUi, RecordsRequestsAndTranscript) {
    FakeUi ui;
    ui.answers({"open /data", "embed 0 Box", "color 0 0 255"});
    EXPECT_EQ(ui.runOpenPanel({"/", "Authorize", "why", false, true}), "/data");
    EXPECT_EQ(ui.runEmbedDialog({"Box", {"All"}})->name, "Box");
    EXPECT_DOUBLE_EQ(ui.pickColor()->blue, 1.0);
    ASSERT_EQ(ui.opens().size(), 1u);
    EXPECT_EQ(ui.opens()[0].message, "why");
    EXPECT_EQ(ui.embeds().size(), 1u);
    EXPECT_EQ(ui.colorRequests(), 1);
    const auto transcript = ui.transcript();
    ASSERT_EQ(transcript.size(), 3u);
    EXPECT_EQ(transcript[1]["prompt"], "embed");
    EXPECT_EQ(ui.remainingAnswers(), 0u);
}

TEST(FakeUi, SeparatesUnansweredPromptsFromScriptErrors) {
    FakeUi ui;
    ui.answers({"button 1000", "nonsense", "text x"});
    EXPECT_EQ(ui.scriptErrors().size(), 1u); // the malformed line, at once
    EXPECT_EQ(ui.runAlert({"T", "m", {"OK"}}), 1000);
    EXPECT_FALSE(ui.pickColor()); // "text x" does not fit
    EXPECT_FALSE(ui.runNameEntry({"Name", "", "", false}));
    EXPECT_EQ(ui.scriptErrors().size(), 2u);
    EXPECT_EQ(ui.unansweredPrompts(), 1);
}

TEST(FakeUi, RecordsProgressAndCancelsFromTheWindow) {
    FakeUi ui;
    int cancels = 0;
    ui.progressOpen([&] { ++cancels; });
    ui.progressSetPercent(0.25);
    ui.cancelProgress();
    ui.progressClose();
    ASSERT_EQ(ui.progress().size(), 3u);
    EXPECT_EQ(ui.progress()[0].kind, Kind::Open);
    EXPECT_DOUBLE_EQ(ui.progress()[1].fraction, 0.25);
    EXPECT_EQ(ui.progress()[2].kind, Kind::Close);
    EXPECT_EQ(cancels, 1);
    EXPECT_EQ(ui.transcript().at(0)["progress"], 0.25);
}

} // namespace
} // namespace px::platform
