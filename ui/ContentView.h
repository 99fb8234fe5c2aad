#pragma once

#include "ConverterViewModel.h"
#include "FFmpegService.h"
#include "SettingsSidebar.h"

#include <QPointer>
#include <QWidget>

#include <memory>

class QHBoxLayout;
class QMessageBox;

namespace kestrel {

class BatchAnnouncer;
class QueueView;

/// Everything in the main window: the sidebar beside the queue panel, and the one alert. Redraws
/// from the model once per turn of the event loop in which the model announces changes.
class ContentView : public QWidget {
    Q_OBJECT

  public:
    explicit ContentView(std::shared_ptr<ConverterViewModel> model,
                         SettingsSidebar::BinaryLocator locateBinary = FFmpegService::locateBinary,
                         QWidget* parent = nullptr);

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
