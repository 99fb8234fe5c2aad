#include "ViewModelFixture.h"

#include "FFmpegError.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace kestrel::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The derived values, and the signals that tell views which jobs have changed.
class DerivedValuesTest : public ViewModelTest {
  protected:
    DerivedValuesTest() {
        QObject::connect(model.get(), &ConverterViewModel::stateChanged, model.get(),
                         [this](std::size_t index) { changed.push_back(index); });
        QObject::connect(model.get(), &ConverterViewModel::jobRemoved, model.get(),
                         [this](std::size_t index) { removed.push_back(index); });
    }

    /// Compares them with their definition, exactly: the mean is added up in the order of the jobs.
    void expectDefinition() const {
        double sum = 0;
        std::size_t completed = 0;
        for (const ConversionJob& job : model->jobs()) {
            const bool isCompleted = job.state.is(JobState::Case::completed);
            completed += isCompleted ? 1U : 0U;
            sum += isCompleted ? 1.0 : job.progress;
        }
        const auto count = static_cast<double>(model->jobs().size());
        EXPECT_EQ(model->completedCount(), completed);
        EXPECT_EQ(model->overallProgress(), model->jobs().empty() ? 0.0 : sum / count);
    }

    /// Compares them before every write, which is after the one before, and at the end.
    void expectDefinitionThroughout(const std::function<void()>& action) {
        int writes = 0;
        const auto connection =
            QObject::connect(model.get(), &ConverterViewModel::willChange, model.get(), [&] {
                ++writes;
                expectDefinition();
            });
        action();
        QObject::disconnect(connection);
        EXPECT_GT(writes, 0);
        expectDefinition();
    }

    /// Lets the conversion of a file report so far, and then fail.
    void failAt(const std::string& name, double fraction) {
        runner->setScript(name, [fraction](const auto&, const auto& report) {
            report(fraction);
            throw FFmpegError::processFailed("no");
        });
    }

    std::vector<std::size_t> changed;
    std::vector<std::size_t> removed;
};

TEST_F(DerivedValuesTest, followEveryWriteOfABatch) {
    queue({"a.opus", "b.opus", "c.opus", "d.opus"});
    chooseDestination();
    failAt("b.opus", 0.1);
    failAt("d.opus", 0.7);
    expectDefinitionThroughout([this] { startAndFinish(); });
    EXPECT_EQ(model->completedCount(), 2U);
    // From 1 to 0, and to 1 by the state alone.
    failAt("b.opus", 1.0);
    runner->setScript("d.opus", nullptr);
    expectDefinitionThroughout([this] { startAndFinish(); });
    EXPECT_EQ(model->completedCount(), 3U);
}

TEST_F(DerivedValuesTest, followTheQueueAsJobsAreAddedAndRemoved) {
    expectDefinitionThroughout([this] { queue({"a.opus", "b.opus", "c.opus", "d.opus"}); });
    chooseDestination();
    failAt("b.opus", 0.3);
    failAt("d.opus", 0.2);
    startAndFinish();
    expectDefinitionThroughout([this] {
        model->remove(job(1));
        queue({"e.opus", "f.opus"});
        model->remove(job(4));
        model->remove(job(0));
    });
    EXPECT_EQ(model->completedCount(), 1U);
    expectDefinitionThroughout([this] {
        while (!model->jobs().empty()) {
            model->remove(job(model->jobs().size() - 1));
        }
    });
}

TEST_F(DerivedValuesTest, followAQueueThatChangesDuringAConversion) {
    queue({"a.opus", "b.opus", "c.opus", "d.opus"});
    chooseDestination();
    runner->setScript("b.opus", [this](const auto&, const auto& report) {
        report(0.25);
        runner->waitForRelease();
        report(0.75);
        throw FFmpegError::processFailed("no");
    });
    model->start();
    ASSERT_TRUE(runUntil([this] { return job(1).progress == 0.25; }));
    expectDefinitionThroughout([this] {
        model->remove(job(0));
        model->remove(job(2));
        queue({"e.opus", "f.opus"});
        runner->release();
        ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    });
    EXPECT_EQ(job(0).progress, 0.75);
}

TEST_F(DerivedValuesTest, comeWithASignalForEveryStateButNotForProgress) {
    queue({"a.opus", "b.opus"});
    chooseDestination();
    failAt("a.opus", 0.5);
    startAndFinish();
    EXPECT_THAT(changed, ElementsAre(0, 0, 1, 1));
    EXPECT_THAT(removed, IsEmpty());
}

TEST_F(DerivedValuesTest, haveTheStateWrittenWhenItsSignalComes) {
    queue({"a.opus"});
    chooseDestination();
    std::vector<std::size_t> completed;
    QObject::connect(model.get(), &ConverterViewModel::stateChanged, model.get(), [&] {
        expectDefinition();
        completed.push_back(model->completedCount());
    });
    startAndFinish();
    EXPECT_THAT(completed, ElementsAre(0, 1));
}

TEST_F(DerivedValuesTest, tellTheIndexThatARemovedJobHad) {
    queue({"a.opus", "b.opus", "c.opus", "d.opus"});
    const ConversionJob first = job(0);
    std::vector<std::string> left;
    QObject::connect(model.get(), &ConverterViewModel::jobRemoved, model.get(),
                     [&] { left = names(); });
    model->remove(job(2));
    EXPECT_THAT(left, ElementsAre("a.opus", "b.opus", "d.opus"));
    model->remove(job(2));
    model->remove(first);
    model->remove(first);
    EXPECT_THAT(removed, ElementsAre(2, 2, 0));
    EXPECT_THAT(names(), ElementsAre("b.opus"));
}

TEST_F(DerivedValuesTest, tellTheIndexOfAChangeAsItIsByThen) {
    queue({"a.opus", "b.opus", "c.opus"});
    chooseDestination();
    runner->setScript("b.opus", [this](const auto&, const auto&) { runner->waitForRelease(); });
    model->start();
    ASSERT_TRUE(runUntil([this] { return isConverting(1); }));
    model->remove(job(0));
    queue({"d.opus"});
    runner->release();
    ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    // a starts and ends, b starts at 1 and ends at 0, and the third position is d by now.
    EXPECT_THAT(changed, ElementsAre(0, 0, 1, 0, 2, 2));
}

} // namespace
} // namespace kestrel::test
