#pragma once

#include "ConverterViewModel.h"
#include "FFmpegService.h"
#include "MainWindow.h"

#include <QCoreApplication>
#include <QWidget>

#include <memory>

class QMenuBar;

namespace kestrel {

/// The program: its one view model and its one window, with the menu. Needs a QApplication.
class KestrelApp {
    Q_DECLARE_TR_FUNCTIONS(kestrel::KestrelApp)

  public:
    KestrelApp();
    /// With a model that somebody else keeps too. `locateBinary` finds `ffmpeg` whenever the window
    /// shows whether it is there.
    explicit KestrelApp(std::shared_ptr<ConverterViewModel> model,
                        FFmpegService::BinaryLocator locateBinary = FFmpegService::locateBinary);

    /// Sets who the program is to the desktop, and what of Qt it does without. Call it
    /// once, before the application object is made.
    static void prepare();

    /// The one window; lives as long as this.
    QWidget& window() noexcept { return window_; }

    /// Shows the window and runs the event loop until the user quits; the result is the exit
    /// status. Does not return from quitting while a batch runs, but ends the process with that
    /// status: the worker that converts must be neither waited for nor destroyed.
    int run();

  private:
    void fillMenuBar(QMenuBar& menuBar);

    std::shared_ptr<ConverterViewModel> model_;
    MainWindow window_;
};

} // namespace kestrel
