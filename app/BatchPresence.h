#pragma once

#include "ConverterViewModel.h"
#include "LauncherProgress.h"
#include "SleepInhibitor.h"

#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

class QWidget;

namespace kestrel {

/// What the desktop notices of a batch besides the window: the machine stays awake, the task bar
/// shows the progress, and at the end an inactive window asks for attention. Main thread.
class BatchPresence final : public QObject {
    Q_OBJECT

  public:
    /// Owned by `window`.
    BatchPresence(std::shared_ptr<ConverterViewModel> model, QWidget* window);

  private:
    /// What the desktop gives for the time of a batch.
    struct Held {
        explicit Held(const QString& reason) : inhibitor(reason) {}

        SleepInhibitor inhibitor;
        LauncherProgress progress;
        /// That the task bar shows; none yet.
        std::optional<double> shownProgress;
    };

    void scheduleRefresh();
    void refresh();
    void updateProgress();
    void requestAttention();
    void withdrawAttention();

    std::shared_ptr<ConverterViewModel> model_;
    QWidget* window_;
    std::optional<Held> held_;
    bool isRefreshScheduled_ = false;
    /// Between two updates of the progress.
    QTimer updatePause_{this};
    bool isUpdateDue_ = false;
};

} // namespace kestrel
