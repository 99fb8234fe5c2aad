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
    struct Dependencies {
        /// Outlives the view model where a conversion runs on.
        std::shared_ptr<ConversionRunner> service;
        /// Tells whether there is an ffmpeg to start with.
        std::function<std::optional<FileURL>()> locateBinary;
        std::unique_ptr<OpenPanel> openPanel;
        std::unique_ptr<FileViewer> fileViewer;
    };

    /// An empty queue on the real desktop, with the real ffmpeg. Looks nothing up, reads no file.
    ConverterViewModel();
    explicit ConverterViewModel(Dependencies surroundings);

    // The published properties. A reference leads to the value as it is now: a write may move it.

    /// The queue, in its order.
    const std::vector<ConversionJob>& jobs() const noexcept { return jobs_; }

    /// The output folder; none until one is chosen. It need not exist.
    const std::optional<FileURL>& destination() const noexcept { return destination_; }

    const ConversionSettings& settings() const noexcept { return settings_; }

    /// Whether a batch runs.
    bool isConverting() const noexcept { return isConverting_; }

    /// Whether something hovers over the place where it can be dropped.
    bool isDropTargeted() const noexcept { return isDropTargeted_; }

    /// What the user has to be told, UTF-8; none when nothing is pending.
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

    /// Announces a change of the job with this identity and makes it, if it is still queued.
    template <typename Change> void publishJob(const UUID& id, Change change) {
        if (find(id) == jobs_.end()) {
            return;
        }
        publish([&] {
            // Whoever heard of the change may have changed the queue.
            if (const auto job = find(id); job != jobs_.end()) {
                change(*job);
            }
        });
    }

    /// The job with this identity, or the end. Looks first where the last one was found: the
    /// reports of one conversion all mean one job.
    std::vector<ConversionJob>::iterator find(const UUID& id) noexcept;

    std::vector<ConversionJob> jobs_;
    std::optional<FileURL> destination_;
    ConversionSettings settings_;
    bool isConverting_ = false;
    bool isDropTargeted_ = false;
    std::optional<std::string> alertMessage_;
    /// Where `find` found a job last.
    std::size_t lastFound_ = 0;
    Dependencies dependencies_;
    /// What the latest batch is asked to stop through; none before the first.
    std::optional<std::stop_source> conversionTask_;
};

} // namespace kestrel
