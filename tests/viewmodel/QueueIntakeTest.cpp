#include "DroppedItem.h"
#include "ViewModelFixture.h"

#include <QThread>

#include <gmock/gmock.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace kestrel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using QueueIntakeTest = ViewModelTest;

TEST_F(QueueIntakeTest, addsTheAcceptedFilesOfATreeSortedByName) {
    for (const char* name : {"tree/b.opus", "tree/A.ogg", "tree/notes.txt", "tree/.hidden.opus",
                             "tree/sub/10.opus", "tree/sub/2.oga", "tree/.hidden/3.opus"}) {
        folder.write(name);
    }
    EXPECT_EQ(notifications([this] { model->add({folder.file("tree")}); }), 1);
    EXPECT_THAT(names(), ElementsAre("2.oga", "10.opus", "A.ogg", "b.opus"));
    EXPECT_EQ(job(0).source(), folder.file("tree/sub/2.oga"));
    EXPECT_EQ(job(0).state, JobState::waiting());
    EXPECT_EQ(job(0).progress, 0.0);
    EXPECT_FALSE(job(0).duration);
}

TEST_F(QueueIntakeTest, sortsFilesAndFoldersOfOneCallTogether) {
    folder.write("one/c.opus");
    folder.write("two/a.opus");
    model->add({folder.file("d.opus"), folder.file("one"), folder.file("b.txt"), folder.file("two"),
                folder.file("b.ogg")});
    EXPECT_THAT(names(), ElementsAre("a.opus", "b.ogg", "c.opus", "d.opus"));
}

TEST_F(QueueIntakeTest, appendsWithoutSortingTheQueueAgain) {
    queue({"b.opus", "a.opus"});
    model->add({folder.file("z.opus"), folder.file("0.opus")});
    EXPECT_THAT(names(), ElementsAre("b.opus", "a.opus", "0.opus", "z.opus"));
}

TEST_F(QueueIntakeTest, growsGeometricallyToAtMostTwiceTheSize) {
    int reallocations = 0;
    for (int number = 0; number < 500; ++number) {
        const std::size_t capacity = model->jobs().capacity();
        model->add({folder.file(std::to_string(number) + ".opus")});
        reallocations += model->jobs().capacity() == capacity ? 0 : 1;
        ASSERT_LE(model->jobs().capacity(), 2 * model->jobs().size());
    }
    EXPECT_LE(reallocations, 10);
}

TEST_F(QueueIntakeTest, matchesExtensionsCaseInsensitivelyAndIgnoresContent) {
    model->add({folder.file("X.OGA"), folder.file("y.Opus"), folder.file("z.opus.bak"),
                folder.file("noextension"), folder.file("song.mp3"), folder.file(".opus")});
    EXPECT_THAT(names(), ElementsAre(".opus", "X.OGA", "y.Opus"));
}

TEST_F(QueueIntakeTest, queuesAFileThatDoesNotExist) {
    model->add({folder.file("gone.opus"), folder.file("gone-folder")});
    EXPECT_THAT(names(), ElementsAre("gone.opus"));
}

TEST_F(QueueIntakeTest, recognisesAQueuedFileByAnotherSpellingOfItsPath) {
    queue({"a.opus"});
    model->add({FileURL(folder.url().path() + "/./x/..//a.opus")});
    EXPECT_EQ(names().size(), 1U);
}

TEST_F(QueueIntakeTest, keepsThePathAsItWasGiven) {
    const FileURL written(folder.url().path() + "/x/../a.opus");
    model->add({written});
    ASSERT_EQ(names().size(), 1U);
    EXPECT_EQ(job(0).source(), written);
    queue({"a.opus"});
    EXPECT_EQ(names().size(), 1U);
}

TEST_F(QueueIntakeTest, keepsDuplicatesWithinOneCallOnly) {
    const FileURL file = folder.write("tree/a.opus");
    model->add({file, file});
    EXPECT_EQ(names().size(), 2U);
    model->add({file});
    EXPECT_EQ(names().size(), 2U);
    model->add({folder.file("tree"), file});
    EXPECT_EQ(names().size(), 2U);
}

TEST_F(QueueIntakeTest, queuesANestedFolderWithAnAcceptedExtension) {
    folder.write("tree/x.ogg/inner.opus");
    model->add({folder.file("tree")});
    EXPECT_THAT(names(), ElementsAre("inner.opus", "x.ogg"));
    // Added directly, it is a folder like any other.
    model->remove(job(0));
    model->remove(job(0));
    model->add({folder.file("tree/x.ogg")});
    EXPECT_THAT(names(), ElementsAre("inner.opus"));
}

TEST_F(QueueIntakeTest, emitsWillChangeEvenIfNothingIsAdded) {
    EXPECT_EQ(notifications([this] { model->add({}); }), 1);
    EXPECT_EQ(notifications([this] { model->add({folder.file("notes.txt")}); }), 1);
    EXPECT_TRUE(model->jobs().empty());
}

TEST_F(QueueIntakeTest, removesOnlyTheJobWithThatIdentity) {
    const FileURL file = folder.file("a.opus");
    model->add({file, file, folder.file("b.opus")});
    const ConversionJob first = job(0);
    const ConversionJob second = job(1);
    EXPECT_EQ(notifications([&] { model->remove(first); }), 1);
    EXPECT_THAT(names(), ElementsAre("a.opus", "b.opus"));
    EXPECT_EQ(job(0).id(), second.id());
    EXPECT_EQ(notifications([&] { model->remove(first); }), 1);
    EXPECT_EQ(names().size(), 2U);
}

TEST_F(QueueIntakeTest, removesAJobGivenByReferenceIntoTheQueue) {
    queue({"a.opus", "b.opus", "c.opus"});
    model->remove(model->jobs()[1]);
    EXPECT_THAT(names(), ElementsAre("a.opus", "c.opus"));
}

TEST_F(QueueIntakeTest, letsTheUserChooseFiles) {
    panel->answer = std::vector{folder.file("b.opus"), folder.file("a.OGG")};
    model->chooseFiles();
    EXPECT_THAT(names(), ElementsAre("a.OGG", "b.opus"));
    ASSERT_EQ(panel->shown.size(), 1U);
    const OpenPanel::Options& shown = panel->shown[0];
    EXPECT_EQ(shown.title, "Choose Opus audio to convert");
    EXPECT_EQ(shown.prompt, "Add Audio");
    EXPECT_TRUE(shown.canChooseFiles);
    EXPECT_FALSE(shown.canChooseDirectories);
    EXPECT_TRUE(shown.allowsMultipleSelection);
    EXPECT_THAT(shown.allowedExtensions, ElementsAre("opus", "ogg", "oga"));
}

TEST_F(QueueIntakeTest, letsTheUserChooseFolders) {
    folder.write("one/b.opus");
    folder.write("two/a.opus");
    panel->answer = std::vector{folder.file("one"), folder.file("two")};
    model->chooseFolder();
    EXPECT_THAT(names(), ElementsAre("a.opus", "b.opus"));
    ASSERT_EQ(panel->shown.size(), 1U);
    const OpenPanel::Options& shown = panel->shown[0];
    EXPECT_EQ(shown.title, "Choose a folder of Opus audio");
    EXPECT_EQ(shown.prompt, "Add Folder");
    EXPECT_FALSE(shown.canChooseFiles);
    EXPECT_TRUE(shown.canChooseDirectories);
    EXPECT_TRUE(shown.allowsMultipleSelection);
    EXPECT_THAT(shown.allowedExtensions, IsEmpty());
}

TEST_F(QueueIntakeTest, addsNothingWhenAPanelConfirmsNothing) {
    panel->answer = std::vector<FileURL>();
    EXPECT_EQ(notifications([this] { model->chooseFiles(); }), 1);
    EXPECT_EQ(notifications([this] { model->chooseFolder(); }), 1);
    EXPECT_TRUE(model->jobs().empty());
}

TEST_F(QueueIntakeTest, queuesALinkToAQueuedFile) {
    const FileURL file = folder.write("a.opus");
    std::filesystem::create_symlink(file.path(), folder.file("b.opus").path());
    model->add({file});
    model->add({folder.file("b.opus")});
    EXPECT_THAT(names(), ElementsAre("a.opus", "b.opus"));
}

TEST_F(QueueIntakeTest, changesNothingWhenAPanelIsDismissed) {
    EXPECT_EQ(notifications([this] {
                  model->chooseFiles();
                  model->chooseFolder();
              }),
              0);
    EXPECT_EQ(panel->shown.size(), 2U);
}

TEST_F(QueueIntakeTest, addsEachDroppedItemLaterAndSeparately) {
    folder.write("tree/2.opus");
    folder.write("tree/1.opus");
    const std::string base = "file://" + folder.url().path();
    EXPECT_TRUE(model->handleDrop({DroppedItem(base + "/z.opus"), DroppedItem(base + "/tree"),
                                   DroppedItem(base + "/a.opus"), DroppedItem(base + "/z.opus")}));
    EXPECT_TRUE(model->jobs().empty());
    int additions = 0;
    QObject::connect(model.get(), &ConverterViewModel::willChange, [&additions] { ++additions; });
    ASSERT_TRUE(runUntil([&additions] { return additions == 4; }));
    EXPECT_THAT(names(), ElementsAre("z.opus", "1.opus", "2.opus", "a.opus"));
}

TEST_F(QueueIntakeTest, addsThousandsOfDroppedFilesOneByOneInTheOrderOfTheDrop) {
    constexpr int count = 5000;
    std::vector<DroppedItem> items;
    for (int number = count; number > 0; --number) {
        items.emplace_back("file:///no-such-folder/" + std::to_string(number) + ".opus");
    }
    items.push_back(items.front());
    int additions = 0;
    QObject::connect(model.get(), &ConverterViewModel::willChange, [&additions] { ++additions; });
    model->handleDrop(items);
    ASSERT_TRUE(runUntil([&additions] { return additions == count + 1; }));
    ASSERT_EQ(model->jobs().size(), std::size_t{count});
    for (int i = 0; i < count; ++i) {
        EXPECT_EQ(job(static_cast<std::size_t>(i)).source().baseName(), std::to_string(count - i));
    }
}

TEST_F(QueueIntakeTest, addsADroppedFileAgainThatWasRemovedMeanwhile) {
    const DroppedItem a("file:///no-such-folder/a.opus");
    const DroppedItem b("file:///no-such-folder/b.opus");
    bool isRemoved = false;
    QObject::connect(model.get(), &ConverterViewModel::willChange, model.get(), [&] {
        if (model->jobs().size() == 1 && !isRemoved) {
            isRemoved = true;
            model->remove(job(0));
        }
    });
    model->handleDrop({a, b, a});
    ASSERT_TRUE(runUntil([this] { return model->jobs().size() == 2; }));
    EXPECT_THAT(names(), ElementsAre("b.opus", "a.opus"));
}

TEST_F(QueueIntakeTest, acceptsADropWithoutFilesAndChangesNothing) {
    EXPECT_EQ(notifications([this] {
                  EXPECT_TRUE(model->handleDrop({DroppedItem("https://example.org/a.opus"),
                                                 DroppedItem("file://elsewhere.invalid/a.opus")}));
                  EXPECT_TRUE(model->handleDrop({}));
                  QCoreApplication::processEvents();
              }),
              0);
    EXPECT_TRUE(model->jobs().empty());
}

TEST_F(QueueIntakeTest, ignoresADropOnceTheModelIsDestroyed) {
    model->handleDrop({DroppedItem("file://" + folder.url().path() + "/a.opus")});
    const std::weak_ptr<ConverterViewModel> weak = model;
    model.reset();
    EXPECT_TRUE(weak.expired());
    QCoreApplication::processEvents();
}

TEST_F(QueueIntakeTest, doesNotConvertJobsAddedDuringTheBatch) {
    queue({"a.opus"});
    chooseDestination();
    runner->setScript("a.opus", [this](const auto&, const auto&) { runner->waitForRelease(); });
    model->start();
    ASSERT_TRUE(runUntil([this] { return isConverting(0); }));
    queue({"b.opus"});
    runner->release();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    EXPECT_EQ(states(), (std::vector{JobState::completed(), JobState::waiting()}));
    startAndFinish();
    EXPECT_EQ(states(), (std::vector{JobState::completed(), JobState::completed()}));
}

} // namespace
} // namespace kestrel::test
