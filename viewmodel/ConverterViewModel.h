#pragma once

#include "ConversionJob.h"
#include "ConversionRunner.h"
#include "ConversionSettings.h"
#include "DroppedItem.h"
#include "FileURL.h"
#include "FileViewer.h"
#include "JobState.h"
#include "OpenPanel.h"
#include "UUID.h"

#include <QObject>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace kestrel {

/// The one observable state object: the queue, the settings, the output folder and the running
/// batch.
///
/// Everything here belongs to the main thread. Every write of a published property emits
/// `willChange` exactly once, before the value changes. Keep it in a std::shared_ptr: a running
/// batch holds another.
class ConverterViewModel : public QObject, public std::enable_shared_from_this<ConverterViewModel> {
    Q_OBJECT

  public:
    /// What the view model reaches the rest of the world through.
    struct Surroundings {
        std::shared_ptr<ConversionRunner> service;
        std::function<std::optional<FileURL>()> locateBinary;
        std::unique_ptr<OpenPanel> openPanel;
        std::unique_ptr<FileViewer> fileViewer;
    };

    /// An empty queue on the real desktop, with the real ffmpeg. Looks nothing up, reads no file.
    ConverterViewModel();
    explicit ConverterViewModel(Surroundings surroundings);

    // Published properties.
    const std::vector<ConversionJob>& jobs() const noexcept { return jobs_; }

    const std::optional<FileURL>& destination() const noexcept { return destination_; }

    const ConversionSettings& settings() const noexcept { return settings_; }

    bool isConverting() const noexcept { return isConverting_; }

    bool isDropTargeted() const noexcept { return isDropTargeted_; }

    const std::optional<std::string>& alertMessage() const noexcept { return alertMessage_; }

    /// Takes effect with the next batch.
    void setSettings(const ConversionSettings& settings);
    void setIsDropTargeted(bool isDropTargeted);
    void setAlertMessage(std::optional<std::string> message);

    /// How many jobs are completed; one pass over the queue.
    std::size_t completedCount() const noexcept;

    /// The mean progress of all jobs, a completed one counting as 1 whatever its progress says; 0
    /// for an empty queue. One pass over the queue.
    double overallProgress() const noexcept;

    /// Queues files, and the accepted files below folders, sorted by name, behind the jobs that are
    /// there. What is queued already, or not accepted, is passed over in silence.
    void add(const std::vector<FileURL>& urls);

    /// Queues what was dropped, each item on its own, soon. Accepts every drop.
    bool handleDrop(const std::vector<DroppedItem>& items);

    /// Takes the job with this identity out of the queue and does nothing else, even if a batch
    /// runs.
    void remove(const ConversionJob& job);

    /// Lets the user pick files to queue.
    void chooseFiles();

    /// Lets the user pick folders to queue.
    void chooseFolder();

    /// Lets the user pick the output folder; a running batch keeps the one it started with.
    void chooseDestination();

    /// Shows the output folder, if there is one, in the file manager.
    void revealDestination();

    /// Starts converting every job that is not completed, or says in `alertMessage` why it cannot.
    /// Does nothing while a batch runs.
    void start();

    /// Asks the running batch to stop, and returns at once; `isConverting` tells when it has.
    void cancel();

  Q_SIGNALS:
    /// A published property is about to be written.
    void willChange();

  private:
    class Batch;

    /// Announces one write of a published property and makes it.
    template <typename Write> void publish(Write write) {
        Q_EMIT willChange();
        write();
    }

    /// Both write one field of the job with this identity, if it is still queued.
    void setState(const UUID& id, JobState state);
    void setProgress(const UUID& id, double progress);

    std::vector<ConversionJob>::iterator find(const UUID& id) noexcept;

    std::vector<ConversionJob> jobs_;
    std::optional<FileURL> destination_;
    ConversionSettings settings_;
    bool isConverting_ = false;
    bool isDropTargeted_ = false;
    std::optional<std::string> alertMessage_;
    Surroundings surroundings_;
    std::optional<std::stop_source> conversionTask_;
};

} // namespace kestrel
