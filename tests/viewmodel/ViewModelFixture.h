#pragma once

#include "ConverterViewModel.h"
#include "LeakGuard.h"
#include "RunUntil.h"
#include "ScriptedDesktop.h"
#include "ScriptedRunner.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::test {

/// A view model with scripted dependencies.
class ViewModelTest : public ::testing::Test {
  protected:
    ViewModelTest() { makeModel(runner); }

    /// Replaces the view model by one with this service.
    void makeModel(std::shared_ptr<ConversionRunner> service) {
        auto ownPanel = std::make_unique<ScriptedOpenPanel>();
        auto ownViewer = std::make_unique<ScriptedFileViewer>();
        panel = ownPanel.get();
        viewer = ownViewer.get();
        model = std::make_shared<ConverterViewModel>(
            ConverterViewModel::Dependencies{std::move(service),
                                             [this] {
                                                 ++lookups;
                                                 return binary;
                                             },
                                             std::move(ownPanel), std::move(ownViewer)});
    }

    /// Queues files with these names, in this order; they need not exist.
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

    /// The file names of the queue.
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

    /// Counts the emissions of `willChange` while the function runs.
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
    /// How often ffmpeg was looked for.
    int lookups = 0;
    ScriptedOpenPanel* panel = nullptr;
    ScriptedFileViewer* viewer = nullptr;
    FileURL destination = folder.makeFolder("out");
    std::shared_ptr<ConverterViewModel> model;
};

} // namespace kestrel::test
