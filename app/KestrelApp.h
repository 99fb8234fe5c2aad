#pragma once

#include "ConverterViewModel.h"
#include "FFmpegService.h"
#include "MainWindow.h"

#include <QCoreApplication>
#include <QWidget>

#include <functional>
#include <memory>

class QAction;
class QMenuBar;

namespace kestrel {

class BatchPresence;

/// The application: one view model, and one window with its menu. Requires: a QApplication.
class KestrelApp {
    Q_DECLARE_TR_FUNCTIONS(kestrel::KestrelApp)

  public:
    KestrelApp();
    /// Shares `model`. `locateBinary` returns ffmpeg's path, or none; called whenever the window
    /// shows whether ffmpeg is installed.
    explicit KestrelApp(std::shared_ptr<ConverterViewModel> model,
                        FFmpegService::BinaryLocator locateBinary = FFmpegService::locateBinary);

    /// Sets the application's name, desktop file and attributes. Call it once, before the
    /// application object is constructed.
    static void prepare();

    /// Owned by this object.
    QWidget& window() noexcept { return window_; }

    /// Shows the window, runs the event loop until the user quits, and returns the exit status. If
    /// a batch is running by then, ends the process with that status instead of returning: the
    /// worker must be neither joined nor destroyed. Otherwise the process should end soon: the
    /// model is not destroyed.
    int run();

  private:
    void fillMenuBar(QMenuBar& menuBar);
    /// Connects `triggered`, from the menu, its shortcut or AT-SPI.
    void connectAction(QAction* action, std::function<void()> run);

    std::shared_ptr<ConverterViewModel> model_;
    MainWindow window_;
    /// Owned by the window.
    BatchPresence* presence_;
};

} // namespace kestrel
