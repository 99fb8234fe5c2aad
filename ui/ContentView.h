#pragma once

#include "ConverterViewModel.h"
#include "FileURL.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QHBoxLayout;
class QMessageBox;

namespace kestrel {

class BatchAnnouncer;
class QueueView;
class SettingsSidebar;

/// Everything in the main window: the sidebar beside the queue panel, and the one alert. Redraws
/// from the model once per turn of the event loop in which the model announces changes.
class ContentView : public QWidget {
    Q_OBJECT

  public:
    /// `locateBinary` returns ffmpeg's location, or none where it is not installed; called at every
    /// refresh.
    ContentView(std::shared_ptr<ConverterViewModel> model,
                std::function<std::optional<FileURL>()> locateBinary, QWidget* parent = nullptr);

    /// Shows the model as it is now.
    void refresh();

    /// Keeps this height at the top free of contents for what lies over it; the backgrounds reach
    /// below it.
    void setTopInset(int height);

  private:
    void scheduleRefresh();
    void refreshAlert();
    void showAlert(const QString& message);

    std::shared_ptr<ConverterViewModel> model_;
    SettingsSidebar* sidebar_ = nullptr;
    QueueView* queue_ = nullptr;
    BatchAnnouncer* announcer_ = nullptr;
    QHBoxLayout* belowInset_ = nullptr;
    QPointer<QMessageBox> alert_;
    bool isRefreshScheduled_ = false;
};

} // namespace kestrel
