#pragma once

#include "ConverterViewModel.h"
#include "LeakGuard.h"
#include "ScriptedDesktop.h"
#include "ScriptedRunner.h"
#include "TemporaryFolder.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::test {

/// Runs the event loop until the condition holds, at most that many milliseconds; tells whether it
/// came to hold.
inline bool runUntil(const std::function<bool()>& condition, int milliseconds = 10'000) {
    const QDeadlineTimer deadline(milliseconds);
    // Events end every turn but the idle ones, which this does.
    QTimer heartbeat;
    heartbeat.start(5);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

/// A view model among scripted surroundings, and what a test asks of it.
class ViewModelTest : public ::testing::Test {
  protected:
    ViewModelTest() {
        ConverterViewModel::Surroundings surroundings;
        surroundings.service = runner;
        surroundings.locateBinary = [this] { return binary; };
        auto ownPanel = std::make_unique<ScriptedOpenPanel>();
        auto ownViewer = std::make_unique<ScriptedFileViewer>();
        panel = ownPanel.get();
        viewer = ownViewer.get();
        surroundings.openPanel = std::move(ownPanel);
        surroundings.fileViewer = std::move(ownViewer);
        model = std::make_shared<ConverterViewModel>(std::move(surroundings));
    }

    /// Queues files of these names, in this order, which need not exist.
    void queue(const std::vector<std::string>& names) {
        for (const std::string& name : names) {
            model->add({folder.file(name)});
        }
    }

    void chooseDestination() {
        panel->answer = std::vector{destination};
        model->chooseDestination();
        panel->answer.reset();
    }

    void startAndFinish() {
        model->start();
        ASSERT_TRUE(model->isConverting());
        ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }));
    }

    const ConversionJob& job(std::size_t position) const { return model->jobs().at(position); }

    std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const ConversionJob& job : model->jobs()) {
            result.emplace_back(job.source().lastPathComponent());
        }
        return result;
    }

    std::vector<JobState> states() const {
        std::vector<JobState> result;
        for (const ConversionJob& job : model->jobs()) {
            result.push_back(job.state);
        }
        return result;
    }

    bool isConverting(std::size_t position) const {
        return job(position).state.is(JobState::Case::converting);
    }

    /// How often observers are told of a change while the function runs.
    int notifications(const std::function<void()>& function) const {
        int count = 0;
        const auto connection = QObject::connect(model.get(), &ConverterViewModel::willChange,
                                                 model.get(), [&count] { ++count; });
        function();
        QObject::disconnect(connection);
        return count;
    }

    LeakGuard guard;
    TemporaryFolder folder;
    std::shared_ptr<ScriptedRunner> runner = std::make_shared<ScriptedRunner>();
    std::optional<FileURL> binary{FileURL("/usr/bin/ffmpeg")};
    ScriptedOpenPanel* panel = nullptr;
    ScriptedFileViewer* viewer = nullptr;
    FileURL destination = folder.makeFolder("out");
    std::shared_ptr<ConverterViewModel> model;
};

} // namespace kestrel::test
