#include "KestrelApp.h"

#include "BatchPresence.h"
#include "BusName.h"
#include "EarlyPaint.h"
#include "FirstFrame.h"
#include "MenuBar.h"
#include "UserInputFilter.h"

#include <QAction>
#include <QApplication>
#include <QDBusConnection>
#include <QKeySequence>
#include <QMenu>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace kestrel {

namespace {

/// Keeps the model until the process has ended. The kernel takes back the memory of a million jobs
/// in an instant; to free them one by one is a cache miss each.
void keepUntilExit(std::shared_ptr<ConverterViewModel> model) {
    // Never destroyed, but reachable: leak checkers do not report it.
    static auto* const kept = new std::shared_ptr<ConverterViewModel>;
    *kept = std::move(model);
}

} // namespace

KestrelApp::KestrelApp() : KestrelApp(std::make_shared<ConverterViewModel>()) {}

KestrelApp::KestrelApp(std::shared_ptr<ConverterViewModel> model,
                       FFmpegService::BinaryLocator locateBinary)
    : model_(std::move(model)),
      window_(model_, std::move(locateBinary)),
      presence_(new BatchPresence(model_, &window_)) {
    window_.setWindowTitle(tr("Kestrel"));
    fillMenuBar(window_.menuBar());
}

void KestrelApp::prepare() {
    // No applicationDisplayName: Qt 6.4 to 6.11 would append it to the title of every panel.
    QCoreApplication::setApplicationName(QStringLiteral("Kestrel"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.kestrel.Converter"));
    // The menu bar is in the title bar, also on desktops with a global menu bar.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
}

void KestrelApp::fillMenuBar(QMenuBar& menuBar) {
    QMenu* file = menuBar.addMenu(tr("&File"));
    QAction* addAudio = file->addAction(tr("Add Audio…"));
    addAudio->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    connectAction(addAudio, [this] { model_->chooseFiles(); });
    QAction* addFolder = file->addAction(tr("Add Folder…"));
    addFolder->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O));
    connectAction(addFolder, [this] { model_->chooseFolder(); });
    file->addSeparator();
    QAction* quit = file->addAction(tr("Quit"));
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    quit->setMenuRole(QAction::QuitRole);
    // Not blocked: it is the way out when a panel of another process hangs.
    QObject::connect(quit, &QAction::triggered, qApp, &QCoreApplication::quit);
}

void KestrelApp::connectAction(QAction* action, std::function<void()> run) {
    const auto runUnlessBlocked = [this, run = std::move(run)] {
        // AT-SPI reaches the menu behind a panel, too.
        if (!isUserInputBlocked(window_)) {
            run();
        }
    };
    // Queued: a panel blocks its caller until it is closed, and an AT-SPI client waits for the
    // reply to its call.
    QObject::connect(action, &QAction::triggered, &window_, runUnlessBlocked, Qt::QueuedConnection);
}

int KestrelApp::run() {
    new FirstFrame(window_, [] {
        requestBusName(QDBusConnection::sessionBus(), QGuiApplication::desktopFileName());
    });
    window_.show();
    // Queued, to run after the layout requests that are pending now.
    QMetaObject::invokeMethod(
        &window_, [this] { paintBeforeExposure(window_); }, Qt::QueuedConnection);
    const int status = QApplication::exec();
    if (model_->isConverting()) {
        window_.hide();
        delete presence_;
        static_cast<void>(std::fflush(nullptr));
        std::_Exit(status);
    }
    keepUntilExit(model_);
    return status;
}

} // namespace kestrel
