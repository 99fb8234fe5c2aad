#include "ViewModelFixture.h"

#include "FFmpegError.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

namespace kestrel::test {
namespace {

using ::testing::ElementsAre;
using ConverterViewModelTest = ViewModelTest;

TEST_F(ConverterViewModelTest, startsEmptyWithItsDefaults) {
    EXPECT_TRUE(model->jobs().empty());
    EXPECT_FALSE(model->destination());
    EXPECT_EQ(model->settings(), ConversionSettings());
    EXPECT_FALSE(model->isConverting());
    EXPECT_FALSE(model->isDropTargeted());
    EXPECT_FALSE(model->alertMessage());
    EXPECT_EQ(model->completedCount(), 0U);
    EXPECT_EQ(model->overallProgress(), 0.0);
}

TEST_F(ConverterViewModelTest, canBeMadeOnTheRealDesktopWithoutADisplay) {
    const auto real = std::make_shared<ConverterViewModel>();
    EXPECT_TRUE(real->jobs().empty());
    EXPECT_FALSE(real->destination());
}

TEST_F(ConverterViewModelTest, emitsWillChangeOnceBeforeEachWrite) {
    int count = 0;
    ConversionSettings settings;
    settings.quality = 40;
    QObject::connect(model.get(), &ConverterViewModel::willChange, model.get(), [&] {
        ++count;
        EXPECT_EQ(model->settings(), ConversionSettings());
    });
    model->setSettings(settings);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(model->settings(), settings);
}

TEST_F(ConverterViewModelTest, emitsWillChangeBeforeEveryPropertyIsWritten) {
    // What the slot sees is what was there before the action.
    const auto seen = [this](const auto& value, const std::function<void()>& action) {
        std::vector<std::decay_t<decltype(value())>> values;
        const auto connection = QObject::connect(model.get(), &ConverterViewModel::willChange,
                                                 model.get(), [&] { values.push_back(value()); });
        action();
        QObject::disconnect(connection);
        return values;
    };
    const auto count = [this] { return model->jobs().size(); };
    EXPECT_THAT(seen(count, [this] { queue({"a.opus"}); }), ElementsAre(0U));
    EXPECT_THAT(seen(count, [this] { model->remove(job(0)); }), ElementsAre(1U));
    EXPECT_THAT(
        seen([this] { return model->destination().has_value(); }, [this] { chooseDestination(); }),
        ElementsAre(false));
    EXPECT_THAT(seen([this] { return model->isDropTargeted(); },
                     [this] { model->setIsDropTargeted(true); }),
                ElementsAre(false));
    EXPECT_THAT(seen([this] { return model->alertMessage().has_value(); },
                     [this] { model->setAlertMessage("text"); }),
                ElementsAre(false));
    queue({"a.opus"});
    const std::vector<bool> converting =
        seen([this] { return model->isConverting(); }, [this] { startAndFinish(); });
    ASSERT_GE(converting.size(), 2U);
    EXPECT_FALSE(converting.front());
    EXPECT_TRUE(converting.back());
    EXPECT_FALSE(model->isConverting());
}

TEST_F(ConverterViewModelTest, looksForFfmpegAtTheStartOnly) {
    EXPECT_EQ(lookups, 0);
    queue({"a.opus"});
    chooseDestination();
    model->setSettings({.format = OutputFormat::wav});
    EXPECT_EQ(lookups, 0);
    startAndFinish();
    EXPECT_EQ(lookups, 1);
}

TEST_F(ConverterViewModelTest, emitsWillChangeForUnchangedValuesToo) {
    EXPECT_EQ(notifications([this] { model->setSettings(model->settings()); }), 1);
    EXPECT_EQ(notifications([this] { model->setIsDropTargeted(false); }), 1);
    EXPECT_EQ(notifications([this] { model->setAlertMessage(std::nullopt); }), 1);
}

TEST_F(ConverterViewModelTest, storesWhatTheViewsWrite) {
    EXPECT_EQ(notifications([this] { model->setIsDropTargeted(true); }), 1);
    EXPECT_TRUE(model->isDropTargeted());
    EXPECT_EQ(notifications([this] { model->setAlertMessage("text"); }), 1);
    EXPECT_EQ(model->alertMessage(), "text");
    model->setAlertMessage(std::nullopt);
    EXPECT_FALSE(model->alertMessage());
}

TEST_F(ConverterViewModelTest, countsCompletedJobsAndTheMeanOfAllProgress) {
    queue({"a.opus", "b.opus", "c.opus", "d.opus"});
    chooseDestination();
    // b fails at 0.3, c is at 0.5, d waits.
    runner->setScript("b.opus", [](const auto&, const auto& onProgress) {
        onProgress(0.3);
        throw FFmpegError::processFailed("no");
    });
    runner->setScript("c.opus", [this](const auto&, const auto& onProgress) {
        onProgress(0.5);
        runner->waitForInterrupt();
        throw FFmpegError::cancelled();
    });
    model->start();
    ASSERT_TRUE(runUntil([this] { return job(2).progress == 0.5; }));
    EXPECT_EQ(states(), (std::vector{JobState::completed(), JobState::failed("no"),
                                     JobState::converting(), JobState::waiting()}));
    EXPECT_EQ(model->completedCount(), 1U);
    EXPECT_DOUBLE_EQ(model->overallProgress(), (1.0 + 0.3 + 0.5 + 0.0) / 4);
    model->cancel();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    EXPECT_DOUBLE_EQ(model->overallProgress(), (1.0 + 0.3 + 0.5 + 0.0) / 4);
    EXPECT_EQ(model->completedCount(), 1U);
}

TEST_F(ConverterViewModelTest, countsACompletedJobAsOneWhateverItsProgress) {
    queue({"a.opus", "b.opus"});
    chooseDestination();
    ConversionRunner::ProgressHandler late;
    runner->setScript("a.opus",
                      [&late](const auto&, const auto& onProgress) { late = onProgress; });
    startAndFinish();
    late(0.25);
    ASSERT_TRUE(runUntil([this] { return job(0).progress == 0.25; }));
    EXPECT_EQ(job(0).state, JobState::completed());
    EXPECT_EQ(model->overallProgress(), 1.0);
}

TEST_F(ConverterViewModelTest, hasNoProgressIfEveryJobFailedAtItsStart) {
    queue({"a.opus", "b.opus"});
    chooseDestination();
    for (const char* name : {"a.opus", "b.opus"}) {
        runner->setScript(name,
                          [](const auto&, const auto&) { throw FFmpegError::processFailed(""); });
    }
    startAndFinish();
    EXPECT_EQ(model->completedCount(), 0U);
    EXPECT_EQ(model->overallProgress(), 0.0);
}

TEST_F(ConverterViewModelTest, survivesASlotThatModifiesTheQueue) {
    queue({"a.opus", "b.opus", "c.opus"});
    chooseDestination();
    bool isRemoved = false;
    QObject::connect(model.get(), &ConverterViewModel::willChange, model.get(), [this, &isRemoved] {
        // This emission is for the end of the second conversion.
        if (!isRemoved && runner->calls().size() == 2) {
            isRemoved = true;
            model->remove(job(0));
            queue({"d.opus", "e.opus"});
        }
    });
    startAndFinish();
    EXPECT_TRUE(isRemoved);
    EXPECT_THAT(names(), ::testing::ElementsAre("b.opus", "c.opus", "d.opus", "e.opus"));
    EXPECT_EQ(job(0).state, JobState::completed());
}

TEST_F(ConverterViewModelTest, writesToTheSameJobAtItsNewIndex) {
    queue({"a.opus", "b.opus", "c.opus"});
    chooseDestination();
    runner->setScript("b.opus", [this](const auto&, const auto& report) {
        report(0.25);
        runner->waitForRelease();
        report(0.75);
        throw FFmpegError::processFailed("gone wrong");
    });
    model->start();
    ASSERT_TRUE(runUntil([this] { return job(1).progress == 0.25; }));
    model->remove(job(0));
    model->remove(job(1));
    queue({"d.opus", "e.opus"});
    runner->release();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    EXPECT_THAT(names(), ::testing::ElementsAre("b.opus", "d.opus", "e.opus"));
    EXPECT_EQ(job(0).progress, 0.75);
    EXPECT_EQ(job(0).state, JobState::failed("gone wrong"));
    EXPECT_EQ(job(1).state, JobState::waiting());
}

TEST_F(ConverterViewModelTest, writesNothingToAJobThatASlotRemoves) {
    queue({"a.opus"});
    chooseDestination();
    bool isRemoved = false;
    QObject::connect(model.get(), &ConverterViewModel::willChange, model.get(), [this, &isRemoved] {
        if (!isRemoved && !model->jobs().empty() && isConverting(0)) {
            isRemoved = true;
            model->remove(job(0));
        }
    });
    startAndFinish();
    EXPECT_THAT(names(), ::testing::IsEmpty());
}

TEST_F(ConverterViewModelTest, isKeptAliveByARunningBatch) {
    queue({"a.opus"});
    chooseDestination();
    runner->setScript("a.opus", [this](const auto&, const auto&) { runner->waitForRelease(); });
    const std::weak_ptr<ConverterViewModel> weak = model;
    model->start();
    ASSERT_TRUE(runUntil([this] { return !runner->calls().empty(); }));
    model.reset();
    EXPECT_FALSE(weak.expired());
    runner->release();
    EXPECT_TRUE(runUntil([&weak] { return weak.expired(); }));
}

TEST_F(ConverterViewModelTest, isNotKeptAliveByQueuedProgressReports) {
    queue({"a.opus"});
    chooseDestination();
    ConversionRunner::ProgressHandler late;
    runner->setScript("a.opus",
                      [&late](const auto&, const auto& onProgress) { late = onProgress; });
    startAndFinish();
    const std::weak_ptr<ConverterViewModel> weak = model;
    late(0.5);
    model.reset();
    EXPECT_TRUE(weak.expired());
    // The report's weak pointer has expired; it does nothing.
    QCoreApplication::processEvents();
}

} // namespace
} // namespace kestrel::test
