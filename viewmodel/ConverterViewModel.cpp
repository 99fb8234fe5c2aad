#include "ConverterViewModel.h"

#include "Batch.h"
#include "ConversionRunner.h"
#include "DroppedItem.h"
#include "FFmpegError.h"
#include "FFmpegService.h"
#include "FileViewer.h"
#include "MainThread.h"
#include "OpenPanel.h"
#include "QueueIntake.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace kestrel {

ConverterViewModel::ConverterViewModel()
    : ConverterViewModel(Dependencies{std::make_shared<FFmpegService>(),
                                      FFmpegService::locateBinary, makeDesktopOpenPanel(),
                                      makeDesktopFileViewer()}) {}

ConverterViewModel::ConverterViewModel(Dependencies dependencies)
    : dependencies_(std::move(dependencies)) {}

ConverterViewModel::~ConverterViewModel() = default;

void ConverterViewModel::setSettings(const ConversionSettings& settings) {
    publish([&] { settings_ = settings; });
}

void ConverterViewModel::setIsDropTargeted(bool isDropTargeted) {
    publish([&] { isDropTargeted_ = isDropTargeted; });
}

void ConverterViewModel::setAlertMessage(std::optional<std::string> message) {
    publish([&] { alertMessage_ = std::move(message); });
}

std::size_t ConverterViewModel::completedCount() const noexcept {
    return totals_.completedCount();
}

double ConverterViewModel::overallProgress() const noexcept {
    return totals_.overallProgress();
}

void ConverterViewModel::add(const std::vector<FileURL>& urls) {
    std::vector<FileURL> files = filesToQueue(urls, jobs_, queuedFiles_);
    publish([&] {
        const std::size_t size = jobs_.size() + files.size();
        if (size > jobs_.capacity()) {
            jobs_.reserve(std::max(size, 2 * jobs_.capacity()));
        }
        totals_.reserve(jobs_.capacity());
        for (FileURL& file : files) {
            jobs_.emplace_back(std::move(file));
            totals_.append(jobs_.back());
        }
        if (queuedFiles_) {
            queuedFiles_->update();
        }
    });
}

struct ConverterViewModel::Drop {
    std::vector<DroppedItem> items;
    std::size_t next = 0;
};

bool ConverterViewModel::handleDrop(std::vector<DroppedItem> items) {
    const auto drop = std::make_shared<Drop>();
    drop->items = std::move(items);
    std::erase_if(drop->items, [](const DroppedItem& item) { return !item.hasFileURL(); });
    if (!drop->items.empty()) {
        runOnMainThread([model = weak_from_this(), drop] {
            if (const auto alive = model.lock()) {
                alive->addDropped(drop);
            }
        });
    }
    return true;
}

void ConverterViewModel::addDropped(const std::shared_ptr<Drop>& drop) {
    using Clock = std::chrono::steady_clock;
    // Each slice refreshes the views once, in a pass over the whole queue.
    constexpr std::chrono::milliseconds slice(16);
    const Clock::time_point end = Clock::now() + slice;
    if (!queuedFiles_) {
        // Reserved for the whole drop: to grow on the way costs a pass over all of them.
        const std::size_t expected = drop->items.size() - drop->next;
        queuedFiles_.emplace(jobs_, expected);
        jobs_.reserve(jobs_.size() + expected);
    }
    while (drop->next < drop->items.size() && Clock::now() < end) {
        if (const std::optional<FileURL> url = drop->items[drop->next++].loadFileURL()) {
            add({*url});
        }
    }
    if (drop->next == drop->items.size()) {
        queuedFiles_.reset();
        return;
    }
    runOnMainThread([model = weak_from_this(), drop] {
        if (const auto alive = model.lock()) {
            alive->addDropped(drop);
        }
    });
}

void ConverterViewModel::remove(const ConversionJob& job) {
    const UUID id = job.id();
    publish([&] {
        queuedFiles_.reset();
        if (const std::optional<std::size_t> index = indexOf(id, 0)) {
            jobs_.erase(jobs_.begin() + static_cast<std::ptrdiff_t>(*index));
            totals_.remove(*index);
            lastFound_ -= *index < lastFound_ ? 1U : 0U;
            Q_EMIT jobRemoved(*index);
        }
    });
}

void ConverterViewModel::chooseFiles() {
    constexpr const auto& extensions = FFmpegService::supportedExtensions;
    const auto chosen = dependencies_.openPanel->runModal(
        {//: The title of a panel.
         .title = tr("Choose Opus audio to convert").toStdString(),
         //: The button that confirms a panel.
         .prompt = tr("Add Audio").toStdString(),
         .canChooseFiles = true,
         .canChooseDirectories = false,
         .allowsMultipleSelection = true,
         .allowedExtensions = {extensions.begin(), extensions.end()}});
    if (chosen) {
        add(*chosen);
    }
}

void ConverterViewModel::chooseFolder() {
    const auto chosen = dependencies_.openPanel->runModal(
        {//: The title of a panel.
         .title = tr("Choose a folder of Opus audio").toStdString(),
         //: The button that confirms a panel.
         .prompt = tr("Add Folder").toStdString(),
         .canChooseFiles = false,
         .canChooseDirectories = true,
         .allowsMultipleSelection = true});
    if (chosen) {
        add(*chosen);
    }
}

void ConverterViewModel::chooseDestination() {
    const auto chosen =
        dependencies_.openPanel->runModal({//: The title of a panel.
                                           .title = tr("Choose output folder").toStdString(),
                                           //: The button that confirms a panel.
                                           .prompt = tr("Choose").toStdString(),
                                           .canChooseFiles = false,
                                           .canChooseDirectories = true,
                                           .canCreateDirectories = true});
    if (chosen) {
        publish([&] {
            destination_ = chosen->empty() ? std::nullopt : std::optional(chosen->front());
        });
    }
}

void ConverterViewModel::revealDestination() {
    if (destination_) {
        dependencies_.fileViewer->reveal(*destination_);
    }
}

void ConverterViewModel::start() {
    if (isConverting_) {
        return;
    }
    if (jobs_.empty()) {
        setAlertMessage(tr("Add at least one Opus file first.").toStdString());
        return;
    }
    if (!destination_) {
        setAlertMessage(tr("Choose an output folder first.").toStdString());
        return;
    }
    if (!dependencies_.locateBinary()) {
        setAlertMessage(FFmpegError::notFound().errorDescription());
        return;
    }
    publish([&] { isConverting_ = true; });
    conversionTask_.emplace();
    runOnMainThread(
        [batch = Batch(shared_from_this(), conversionTask_->get_token())] { Batch::run(batch); });
}

bool ConverterViewModel::isStopRequested() const noexcept {
    return conversionTask_ && conversionTask_->stop_requested();
}

void ConverterViewModel::cancel() {
    if (conversionTask_) {
        conversionTask_->request_stop();
    }
    dependencies_.service->interruptActiveProcess();
}

void ConverterViewModel::setState(const UUID& id, JobState state) {
    publishJob(id, [&](std::size_t index) {
        jobs_[index].state = std::move(state);
        totals_.update(index, jobs_[index]);
        Q_EMIT stateChanged(index);
    });
}

void ConverterViewModel::setProgress(const UUID& id, double progress) {
    publishJob(id, [&](std::size_t index) {
        jobs_[index].progress = progress;
        totals_.update(index, jobs_[index]);
    });
}

std::optional<std::size_t> ConverterViewModel::find(const UUID& id) noexcept {
    const std::optional<std::size_t> index = indexOf(id, lastFound_);
    lastFound_ = index.value_or(lastFound_);
    return index;
}

std::optional<std::size_t> ConverterViewModel::indexOf(const UUID& id,
                                                       std::size_t start) const noexcept {
    const auto isWanted = [&id](const ConversionJob& job) { return job.id() == id; };
    const auto middle = jobs_.begin() + static_cast<std::ptrdiff_t>(std::min(start, jobs_.size()));
    auto found = std::find_if(middle, jobs_.end(), isWanted);
    if (found == jobs_.end()) {
        found = std::find_if(jobs_.begin(), middle, isWanted);
        if (found == middle) {
            return std::nullopt;
        }
    }
    return static_cast<std::size_t>(found - jobs_.begin());
}

} // namespace kestrel
