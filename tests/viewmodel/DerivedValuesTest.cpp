#include "ViewModelFixture.h"

#include "FFmpegError.h"

#include <cstddef>
#include <functional>
#include <string>

namespace kestrel::test {
namespace {

/// The number of completed jobs and the overall progress.
class DerivedValuesTest : public ViewModelTest {
  protected:
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

} // namespace
} // namespace kestrel::test
