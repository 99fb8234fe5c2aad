#include "KestrelApp.h"

#include <QApplication>

#include <csignal>

int main(int argc, char** argv) {
    // Whoever started the program may have left this signal ignored, and the exit status of a child
    // would then be lost.
    static_cast<void>(std::signal(SIGCHLD, SIG_DFL));

    kestrel::KestrelApp::setIdentity();
    const QApplication application(argc, argv);
    kestrel::KestrelApp app;
    return app.run();
}
