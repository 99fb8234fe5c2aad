#pragma once

#include "ConverterViewModel.h"
#include "FileURL.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QHBoxLayout;

namespace kestrel {

class Alert;
class BatchAnnouncer;
class QueueView;
class SettingsSidebar;

/// The main window's contents: the sidebar, the queue panel and the alert. Coalesces the model's
/// `willChange` signals into one refresh per event-loop iteration.
class ContentView : public QWidget {
    Q_OBJECT

  public:
    /// `locateBinary` returns ffmpeg's location, or nullopt if it is not installed; called at every
    /// refresh.
    ContentView(std::shared_ptr<ConverterViewModel> model,
                std::function<std::optional<FileURL>()> locateBinary, QWidget* parent = nullptr);

    /// Shows the model as it is now.
    void refresh();

    /// Reserves this height, in pixels, at the top for the title bar drawn over it; the backgrounds
    /// extend under it.
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
    QPointer<Alert> alert_;
    bool isRefreshScheduled_ = false;
};

} // namespace kestrel
