#pragma once

#include "ConversionJob.h"
#include "ConversionSettings.h"
#include "FileURL.h"
#include "JobState.h"
#include "QueueTotals.h"
#include "QueuedFiles.h"
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

class ConversionRunner;
class DroppedItem;
class FileViewer;
class OpenPanel;

/// The one observable state object: the queue, the settings, the output folder and the running
/// batch.
///
/// Main thread only. Every write of a published property emits `willChange` exactly once, before
/// the value changes. Requires: owned by a std::shared_ptr, since a running batch shares ownership.
class ConverterViewModel : public QObject, public std::enable_shared_from_this<ConverterViewModel> {
    Q_OBJECT

  public:
    /// What the view model calls; a test passes fakes.
    struct Dependencies {
        /// Outlives the view model while a worker still converts.
        std::shared_ptr<ConversionRunner> service;
        /// Returns ffmpeg's location, or none where it is not installed.
        std::function<std::optional<FileURL>()> locateBinary;
        std::unique_ptr<OpenPanel> openPanel;
        std::unique_ptr<FileViewer> fileViewer;
    };

    /// An empty queue with the desktop's panels and file manager and the installed ffmpeg. Does no
    /// I/O and makes no D-Bus call.
    ConverterViewModel();
    explicit ConverterViewModel(Dependencies dependencies);
    ConverterViewModel(const ConverterViewModel&) = delete;
    ConverterViewModel& operator=(const ConverterViewModel&) = delete;
    ~ConverterViewModel() override;

    // The published properties. A reference is invalidated by the next write.

    /// The queue, in its order.
    const std::vector<ConversionJob>& jobs() const noexcept { return jobs_; }

    /// The output folder; none until one is chosen. It need not exist.
    const std::optional<FileURL>& destination() const noexcept { return destination_; }

    const ConversionSettings& settings() const noexcept { return settings_; }

    /// Whether a batch runs.
    bool isConverting() const noexcept { return isConverting_; }

    /// Whether the running batch, or else the last one, was asked to stop by `cancel`.
    bool isStopRequested() const noexcept;

    /// Whether a drag that can be dropped is over the window.
    bool isDropTargeted() const noexcept { return isDropTargeted_; }

    /// The text of the pending alert, UTF-8, or none.
    const std::optional<std::string>& alertMessage() const noexcept { return alertMessage_; }

    /// Takes effect with the next batch.
    void setSettings(const ConversionSettings& settings);
    void setIsDropTargeted(bool isDropTargeted);
    void setAlertMessage(std::optional<std::string> message);

    /// Returns the number of completed jobs, in O(n).
    std::size_t completedCount() const noexcept;

    /// Returns the mean progress of all jobs, in O(n): a completed job counts as 1 whatever its
    /// progress is, and an empty queue gives 0.
    double overallProgress() const noexcept;

    /// Appends files, and the accepted files below folders, sorted by name. Files that are queued
    /// already, or not accepted, are skipped without a message.
    void add(const std::vector<FileURL>& urls);

    /// Adds each item by itself, in later event-loop iterations, as many in one as take a few
    /// milliseconds. Returns true: every drop is accepted.
    bool handleDrop(std::vector<DroppedItem> items);

    /// Removes the job with this identity from the queue and does nothing else, even while a batch
    /// runs.
    void remove(const ConversionJob& job);

    /// Shows a modal panel for files, and adds what was chosen.
    void chooseFiles();

    /// Shows a modal panel for folders, and adds what was chosen.
    void chooseFolder();

    /// Shows a modal panel for the output folder. A running batch keeps the one it started with.
    void chooseDestination();

    /// Shows the output folder, if there is one, in the file manager.
    void revealDestination();

    /// Starts a batch over every job that is not completed, or sets `alertMessage` to why it
    /// cannot. No-op while a batch runs.
    void start();

    /// Requests the running batch to stop, and returns at once; `isConverting` becomes false when
    /// it has.
    void cancel();

  Q_SIGNALS:
    /// A published property is about to be written.
    void willChange();

    /// The state of the job at this index has been written.
    void stateChanged(std::size_t index);

    /// The job at this index has been removed, and those after it have moved up by one.
    void jobRemoved(std::size_t index);

  private:
    class Batch;
    struct Drop;

    /// Adds items of a drop until its time slice ends, and posts a task for the rest.
    void addDropped(const std::shared_ptr<Drop>& drop);

    /// Emits `willChange`, then makes one write of a published property.
    template <typename Write> void publish(Write write) {
        Q_EMIT willChange();
        write();
    }

    /// Both write one field of the job with this identity; no-op when it is not queued any more.
    void setState(const UUID& id, JobState state);
    void setProgress(const UUID& id, double progress);

    template <typename Change> void publishJob(const UUID& id, Change change) {
        if (!find(id)) {
            return;
        }
        publish([&] {
            // A slot may have re-entered and modified the queue.
            if (const std::optional<std::size_t> index = find(id)) {
                change(*index);
            }
        });
    }

    /// Returns the index of the job with this identity, or none. O(1) for the one found last and
    /// the next one, as in a batch; else O(n).
    std::optional<std::size_t> find(const UUID& id) noexcept;

    /// The same, looking at the jobs from `start` on before those ahead of it.
    std::optional<std::size_t> indexOf(const UUID& id, std::size_t start) const noexcept;

    std::vector<ConversionJob> jobs_;
    /// Of `jobs_`; every write of these updates it.
    QueueTotals totals_;
    std::optional<FileURL> destination_;
    ConversionSettings settings_;
    bool isConverting_ = false;
    bool isDropTargeted_ = false;
    std::optional<std::string> alertMessage_;
    /// The files in `jobs_`, while dropped items are added one by one; none if unknown.
    std::optional<QueuedFiles> queuedFiles_;
    /// The index that `find` returned last.
    std::size_t lastFound_ = 0;
    Dependencies dependencies_;
    /// The stop source of the current batch, or of the last one; none before the first.
    std::optional<std::stop_source> conversionTask_;
};

} // namespace kestrel
