#include "KestrelApp.h"
#include "StandardStreams.h"
#include "Translation.h"

#include <QApplication>

int main(int argc, char** argv) {
    kestrel::settleStandardStreams();
    kestrel::KestrelApp::prepare();
    const QApplication application(argc, argv);
    const kestrel::Translation translation;
    kestrel::KestrelApp app;
    return app.run();
}
