#include "KestrelApp.h"

#include "ApplicationStyle.h"
#include "BusName.h"
#include "FirstFrame.h"
#include "MenuBar.h"

#include <QAction>
#include <QApplication>
#include <QDBusConnection>
#include <QKeySequence>
#include <QMenu>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace kestrel {

KestrelApp::KestrelApp() : KestrelApp(std::make_shared<ConverterViewModel>()) {}

KestrelApp::KestrelApp(std::shared_ptr<ConverterViewModel> model,
                       FFmpegService::BinaryLocator locateBinary)
    : model_(std::move(model)), window_(model_, std::move(locateBinary)) {
    window_.setWindowTitle(tr("Kestrel"));
    fillMenuBar(window_.menuBar());
}

void KestrelApp::prepare() {
    // The application's name serves as its display name too. Qt 6.4 to 6.11 would append a display
    // name of its own to the title of every panel.
    QCoreApplication::setApplicationName(QStringLiteral("Kestrel"));
    QGuiApplication::setDesktopFileName(QStringLiteral("org.kestrel.Converter"));
    // The window's own strip carries the menu, also on desktops with a place for menus elsewhere.
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar);
    QApplication::setStyle(new ApplicationStyle);
}

void KestrelApp::fillMenuBar(QMenuBar& menuBar) {
    QMenu* file = menuBar.addMenu(tr("&File"));
    QAction* addAudio = file->addAction(tr("Add Audio…"));
    addAudio->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    // Queued: a panel keeps its caller until it is closed, and assistive technology waits for the
    // answer to its call.
    QObject::connect(
        addAudio, &QAction::triggered, &window_, [this] { model_->chooseFiles(); },
        Qt::QueuedConnection);
    QAction* addFolder = file->addAction(tr("Add Folder…"));
    addFolder->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_O));
    QObject::connect(
        addFolder, &QAction::triggered, &window_, [this] { model_->chooseFolder(); },
        Qt::QueuedConnection);
    file->addSeparator();
    QAction* quit = file->addAction(tr("Quit"));
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    quit->setMenuRole(QAction::QuitRole);
    QObject::connect(quit, &QAction::triggered, qApp, &QCoreApplication::quit);
}

int KestrelApp::run() {
    new FirstFrame(window_, [] {
        requestBusName(QDBusConnection::sessionBus(), QGuiApplication::desktopFileName());
    });
    window_.show();
    const int status = QApplication::exec();
    if (model_->isConverting()) {
        window_.hide();
        static_cast<void>(std::fflush(nullptr));
        std::_Exit(status);
    }
    return status;
}

} // namespace kestrel
