#include "FaultFixture.h"
#include "MediaFiles.h"
#include "PrivateMounts.h"
#include "RunInChild.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

// Faults of files and folders, with the real ffmpeg.

namespace kestrel::test {
namespace {

using ::testing::AllOf;
using ::testing::AnyOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class FileFaultTest : public FaultTest {
  protected:
    FileFaultTest() { binary = FFmpegService::locateBinary(); }

    void queueTone(const std::string& name, double seconds = 1) {
        makeOpusFile(folder.file(name), seconds);
        model->add({folder.file(name)});
    }

    void expectTheSecondToBeConverted() {
        EXPECT_EQ(outcomeOf(1), "completed");
        EXPECT_NEAR(describeAudio(output("fine_converted.mp3")).seconds, 1, 0.1);
    }

    std::string notCreated(const std::string& reason) const {
        return "failed: The folder “" + destination.path() + "” could not be created: " + reason +
               ".";
    }
};

class DestinationFaultTest : public FileFaultTest {
  protected:
    DestinationFaultTest() {
        queueTone("in/tone.opus");
        queueTone("in/fine.opus");
    }
};

TEST_F(DestinationFaultTest, isCreatedAgainWhenItIsDeletedBeforeTheStart) {
    chooseDestination();
    std::filesystem::remove(destination.path());
    convertAll();
    EXPECT_EQ(outcomeOf(0), "completed");
    expectTheSecondToBeConverted();
}

TEST_F(DestinationFaultTest, isCreatedAgainWhenItIsDeletedBetweenTwoFiles) {
    QObject::connect(model.get(), &ConverterViewModel::willChange, model.get(), [this] {
        if (model->completedCount() == 1) {
            std::filesystem::remove_all(destination.path());
        }
    });
    convertAll();
    EXPECT_EQ(outcomeOf(0), "completed");
    EXPECT_EQ(outcomeOf(1), "completed");
}

TEST_F(DestinationFaultTest, costsOnlyTheCurrentFileWhenItIsDeletedDuringTheConversion) {
    queueTone("in/long.opus", 200);
    model->remove(job(0));
    model->remove(job(0));
    queueTone("in/fine.opus");
    chooseDestination();
    model->start();
    ASSERT_TRUE(runUntil([this] { return exists("out/long_converted.mp3"); }));
    std::filesystem::remove_all(destination.path());
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }, 60'000));
    // ffmpeg keeps writing to the unlinked file and exits with status 0.
    EXPECT_EQ(outcomeOf(0), "completed");
    EXPECT_FALSE(exists("out/long_converted.mp3"));
    expectTheSecondToBeConverted();
}

TEST_F(DestinationFaultTest, thatIsReadOnlyFailsEveryFileWithStderr) {
    const std::string outcomes = PrivateMounts::run([this] {
        PrivateMounts::coverReadOnly(destination.path());
        convertAll();
        return outcomeOf(0) + "|" + outcomeOf(1);
    });
    EXPECT_THAT(outcomes, StartsWith("failed: "));
    EXPECT_THAT(outcomes, HasSubstr("Read-only file system|failed: "));
    EXPECT_THAT(outcomes, EndsWith("Read-only file system"));
    EXPECT_THAT(outcomes, HasSubstr("tone_converted.mp3"));
    EXPECT_THAT(outcomes, HasSubstr("fine_converted.mp3"));
}

TEST_F(DestinationFaultTest, thatIsFullFailsALongFileWithStderr) {
    queueTone("in/long.opus", 60);
    const std::string outcomes = PrivateMounts::run([this] {
        PrivateMounts::coverLimited(destination.path(), "64k");
        convertAll();
        return outcomeOf(2);
    });
    EXPECT_THAT(outcomes, StartsWith("failed: "));
    EXPECT_THAT(outcomes, HasSubstr("No space left on device"));
}

TEST_F(DestinationFaultTest, thatIsFullFailsAShortFileUnlessFfmpegExitsWithZero) {
    const std::string outcomes = PrivateMounts::run([this] {
        PrivateMounts::coverLimited(destination.path(), "4k");
        convertAll();
        return outcomeOf(0);
    });
    // ffmpeg 5.1 exits with status 0, 7.1 and 9.0 do not.
    EXPECT_THAT(outcomes, AnyOf("completed", AllOf(StartsWith("failed: "),
                                                   HasSubstr("No space left on device"))));
}

TEST_F(DestinationFaultTest, thatIsAFileFailsEveryFileWithTheReason) {
    destination = folder.write("file", "in the way");
    convertAll();
    EXPECT_EQ(outcomeOf(0), notCreated("Not a directory"));
    EXPECT_EQ(outcomeOf(1), notCreated("Not a directory"));
    EXPECT_EQ(contents(folder.file("file")), "in the way");
}

TEST_F(DestinationFaultTest, thatLiesBelowAFileFailsEveryFileWithTheReason) {
    destination = folder.write("file", "in the way").appendingPathComponent("below");
    convertAll();
    EXPECT_EQ(outcomeOf(0), notCreated("Not a directory"));
    EXPECT_EQ(outcomeOf(1), notCreated("Not a directory"));
}

TEST_F(DestinationFaultTest, thatIsADanglingLinkFailsEveryFileWithTheReason) {
    std::filesystem::create_symlink(path("nowhere"), path("link"));
    destination = folder.file("link");
    convertAll();
    EXPECT_EQ(outcomeOf(0), notCreated("File exists"));
    EXPECT_EQ(outcomeOf(1), notCreated("File exists"));
    EXPECT_FALSE(exists("nowhere"));
}

TEST_F(DestinationFaultTest, thatIsALinkToAFolderIsFollowed) {
    std::filesystem::create_symlink(path("out"), path("link"));
    destination = folder.file("link");
    convertAll();
    EXPECT_EQ(outcomeOf(0), "completed");
    EXPECT_TRUE(exists("out/tone_converted.mp3"));
    expectTheSecondToBeConverted();
}

TEST_F(DestinationFaultTest, ofMoreBytesThanPathMaxFailsEveryFileWithTheReason) {
    while (destination.path().size() < 4096) {
        const std::size_t missing = 4096 - destination.path().size() - 1;
        destination = destination.appendingPathComponent(
            std::string(std::min<std::size_t>(missing, 200), 'x'));
    }
    convertAll();
    EXPECT_THAT(outcomeOf(0), EndsWith("could not be created: File name too long."));
    EXPECT_THAT(outcomeOf(1), EndsWith("could not be created: File name too long."));
}

TEST_F(DestinationFaultTest, leavesADanglingLinkOfTheOutputsNameToFfmpeg) {
    std::filesystem::create_symlink(path("target.mp3"), output("tone_converted.mp3").path());
    convertAll();
    EXPECT_EQ(outcomeOf(0), "completed");
    EXPECT_NEAR(describeAudio(folder.file("target.mp3")).seconds, 1, 0.1);
    expectTheSecondToBeConverted();
}

/// Every version of ffmpeg names the file, and ends with the reason.
auto isFailure(const std::string& file, const std::string& reason) {
    return AllOf(StartsWith("failed: "), HasSubstr(file), EndsWith(reason));
}

class SourceFaultTest : public FileFaultTest {};

TEST_F(SourceFaultTest, deletedBeforeItsTurnFailsWithStderr) {
    queueTone("in/tone.opus");
    queueTone("in/fine.opus");
    std::filesystem::remove(path("in/tone.opus"));
    convertAll();
    EXPECT_THAT(outcomeOf(0), isFailure(path("in/tone.opus"), "No such file or directory"));
    expectTheSecondToBeConverted();
}

TEST_F(SourceFaultTest, deletedDuringTheConversionIsReadToItsEnd) {
    queueTone("in/tone.opus", 200);
    queueTone("in/fine.opus");
    chooseDestination();
    model->start();
    // ffmpeg opens the output when it has opened the source.
    ASSERT_TRUE(runUntil([this] { return exists("out/tone_converted.mp3"); }));
    std::filesystem::remove(path("in/tone.opus"));
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }, 60'000));
    EXPECT_EQ(outcomeOf(0), "completed");
    EXPECT_NEAR(describeAudio(output("tone_converted.mp3")).seconds, 200, 1);
    expectTheSecondToBeConverted();
}

TEST_F(SourceFaultTest, replacedByAFolderFailsWithStderr) {
    queueTone("in/tone.opus");
    queueTone("in/fine.opus");
    std::filesystem::remove(path("in/tone.opus"));
    std::filesystem::create_directory(path("in/tone.opus"));
    convertAll();
    EXPECT_THAT(outcomeOf(0), isFailure(path("in/tone.opus"), "Is a directory"));
    expectTheSecondToBeConverted();
}

TEST_F(SourceFaultTest, thatIsAFolderNamedLikeATrackIsSearchedForTracks) {
    makeOpusFile(folder.file("in/album.ogg/fine.opus"), 1);
    std::filesystem::create_directory(path("in/empty.ogg"));
    model->add({folder.file("in/album.ogg"), folder.file("in/empty.ogg")});
    EXPECT_THAT(names(), ::testing::ElementsAre("fine.opus"));
    convertAll();
    EXPECT_EQ(outcomeOf(0), "completed");
}

TEST_F(SourceFaultTest, thatIsADeviceFailsWithStderr) {
    std::filesystem::create_symlink("/dev/zero", path("zero.ogg"));
    model->add({folder.file("zero.ogg")});
    queueTone("in/fine.opus");
    convertAll();
    EXPECT_THAT(outcomeOf(0),
                isFailure(path("zero.ogg"), "Invalid data found when processing input"));
    expectTheSecondToBeConverted();
}

TEST_F(SourceFaultTest, thatIsAFifoIsConvertedWhole) {
    makeOpusFile(folder.file("tone.bin"), 3);
    ASSERT_EQ(::mkfifo(path("pipe.ogg").c_str(), 0600), 0);
    model->add({folder.file("pipe.ogg")});
    queueTone("in/fine.opus");
    chooseDestination();
    model->start();
    // open() blocks until there is a reader.
    std::thread writer([this] {
        std::ifstream in(path("tone.bin"), std::ios::binary);
        std::ofstream(path("pipe.ogg"), std::ios::binary) << in.rdbuf();
    });
    EXPECT_TRUE(runUntil([this] { return !model->isConverting(); }));
    writer.join();
    EXPECT_EQ(outcomeOf(0), "completed");
    EXPECT_NEAR(describeAudio(output("pipe_converted.mp3")).seconds, 3, 0.1);
    expectTheSecondToBeConverted();
}

TEST_F(SourceFaultTest, thatIsAFifoWithoutAWriterEndsAtRepeatedInterrupts) {
    ASSERT_EQ(::mkfifo(path("pipe.ogg").c_str(), 0600), 0);
    model->add({folder.file("pipe.ogg")});
    queueTone("in/fine.opus");
    chooseDestination();
    model->start();
    ASSERT_TRUE(runUntil([this] { return isConverting(0); }));
    // While it waits for a writer, ffmpeg ignores its first interrupts and exits at the fourth; one
    // that arrives before its signal handler is installed kills it.
    EXPECT_TRUE(runUntil([this] {
        model->cancel();
        return !model->isConverting();
    }));
    EXPECT_THAT(outcomeOf(0), AnyOf(HasSubstr("hard exiting"), "cancelled"));
    EXPECT_EQ(outcomeOf(1), "waiting");
}

TEST_F(SourceFaultTest, thatIsNotReadableFailsWithStderr) {
    queueTone("in/tone.opus");
    queueTone("in/fine.opus");
    std::filesystem::permissions(path("in/tone.opus"), std::filesystem::perms::none);
    std::filesystem::permissions(folder.url().path(), std::filesystem::perms::all);
    std::filesystem::permissions(destination.path(), std::filesystem::perms::all);
    const std::string outcomes = PrivateMounts::run([this] {
        // The superuser may read everything.
        if (!dropPrivileges()) {
            return std::string("cannot become another user");
        }
        convertAll();
        return outcomeOf(0) + "|" + outcomeOf(1);
    });
    EXPECT_THAT(outcomes, isFailure(path("in/tone.opus"), "Permission denied|completed"));
}

} // namespace
} // namespace kestrel::test
