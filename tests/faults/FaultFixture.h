#pragma once

#include "FFmpegService.h"
#include "ViewModelFixture.h"

#include <cstddef>
#include <memory>
#include <string>

namespace kestrel::test {

/// A queue of two files in the real view model, with the real service. A fault hits the first
/// conversion; the second must not be affected. The base's leak guard compares file descriptors,
/// children and threads before and after.
class FaultTest : public ViewModelTest {
  protected:
    FaultTest() {
        binary = FileURL(CHILD_HELPER);
        makeModel(service);
    }

    /// Queues a file with a script for the stand-in ffmpeg.
    void queueScript(const std::string& script) {
        const std::string name = std::to_string(model->jobs().size() + 1) + ".opus";
        model->add({folder.write("in/" + name, script)});
    }

    void queueHarmless() { queueScript("convert write-output fine\n"); }

    /// Starts the batch and runs the event loop until it ends.
    void convertAll() {
        chooseDestination();
        model->start();
        ASSERT_TRUE(model->isConverting());
        ASSERT_TRUE(runUntil([this] { return !model->isConverting(); }, 100'000));
    }

    /// Converts a file with this script and a harmless one; returns the outcome of the first.
    std::string outcome(const std::string& script) {
        queueScript(script);
        queueHarmless();
        convertAll();
        return outcomeOf(0);
    }

    std::string outcomeOf(std::size_t position) const {
        const JobState& state = job(position).state;
        switch (state.which()) {
        case JobState::Case::failed:
            return "failed: " + state.message();
        case JobState::Case::waiting:
            return "waiting";
        case JobState::Case::converting:
            return "converting";
        case JobState::Case::completed:
            return "completed";
        case JobState::Case::cancelled:
            return "cancelled";
        }
        return "";
    }

    FileURL output(const std::string& name) const {
        return destination.appendingPathComponent(name);
    }

    bool exists(const std::string& name) const { return folder.has(name); }

    std::string path(const std::string& name) const { return folder.file(name).path(); }

    std::shared_ptr<FFmpegService> service =
        std::make_shared<FFmpegService>([this] { return binary; });
};

} // namespace kestrel::test
