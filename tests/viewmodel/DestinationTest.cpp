#include "ViewModelFixture.h"

#include <gmock/gmock.h>

#include <vector>

namespace kestrel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using DestinationTest = ViewModelTest;

TEST_F(DestinationTest, isTheFolderThatTheUserChooses) {
    panel->answer = std::vector{folder.file("out")};
    EXPECT_EQ(notifications([this] { model->chooseDestination(); }), 1);
    EXPECT_EQ(model->destination(), folder.file("out"));
    ASSERT_EQ(panel->shown.size(), 1U);
    const OpenPanel::Options& shown = panel->shown[0];
    EXPECT_EQ(shown.title, "Choose output folder");
    EXPECT_EQ(shown.prompt, "Choose");
    EXPECT_FALSE(shown.canChooseFiles);
    EXPECT_TRUE(shown.canChooseDirectories);
    EXPECT_TRUE(shown.canCreateDirectories);
    EXPECT_FALSE(shown.allowsMultipleSelection);
}

TEST_F(DestinationTest, staysWhenThePanelIsDismissed) {
    EXPECT_EQ(notifications([this] { model->chooseDestination(); }), 0);
    EXPECT_FALSE(model->destination());
    chooseDestination();
    EXPECT_EQ(notifications([this] { model->chooseDestination(); }), 0);
    EXPECT_EQ(model->destination(), destination);
}

TEST_F(DestinationTest, isNoneWhenThePanelConfirmsNothing) {
    chooseDestination();
    panel->answer = std::vector<FileURL>();
    model->chooseDestination();
    EXPECT_FALSE(model->destination());
}

TEST_F(DestinationTest, isStoredAsThePanelSpellsIt) {
    panel->answer = std::vector{FileURL("/music/./new//../out")};
    model->chooseDestination();
    EXPECT_EQ(model->destination()->path(), "/music/./new//../out");
}

TEST_F(DestinationTest, isNeitherCreatedNorChecked) {
    panel->answer = std::vector{folder.file("not there")};
    model->chooseDestination();
    EXPECT_EQ(model->destination(), folder.file("not there"));
    EXPECT_FALSE(model->alertMessage());
}

TEST_F(DestinationTest, isShownInTheFileViewer) {
    model->revealDestination();
    EXPECT_THAT(viewer->revealed, IsEmpty());
    EXPECT_FALSE(model->alertMessage());
    chooseDestination();
    EXPECT_EQ(notifications([this] { model->revealDestination(); }), 0);
    EXPECT_THAT(viewer->revealed, ElementsAre(destination));
}

TEST_F(DestinationTest, takesEffectWithTheNextBatch) {
    queue({"a.opus", "b.opus"});
    chooseDestination();
    runner->setScript("a.opus", [this](const auto&, const auto&) { runner->waitForRelease(); });
    model->start();
    ASSERT_TRUE(runUntil([this] { return isConverting(0); }));
    panel->answer = std::vector{folder.file("later")};
    model->chooseDestination();
    ConversionSettings settings;
    settings.format = OutputFormat::wav;
    model->setSettings(settings);
    runner->release();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    queue({"c.opus"});
    startAndFinish();
    const auto calls = runner->calls();
    ASSERT_EQ(calls.size(), 3U);
    EXPECT_EQ(calls[1].destination, folder.file("out/b_converted.mp3"));
    EXPECT_EQ(calls[1].settings, ConversionSettings());
    EXPECT_EQ(calls[2].destination, folder.file("later/c_converted.wav"));
    EXPECT_EQ(calls[2].settings, settings);
}

} // namespace
} // namespace kestrel::test
