#include "ApplicationStyle.h"
#include "DisplayErrorHandler.h"
#include "KestrelApp.h"
#include "StandardStreams.h"
#include "Translation.h"

#include <QApplication>

#include <optional>

int main(int argc, char** argv) {
    kestrel::redirectMissingStandardStreams();
    kestrel::KestrelApp::prepare();
    std::optional<kestrel::DisplayErrorHandler> displayErrors(std::in_place);
    const QApplication application(argc, argv);
    displayErrors.reset();
    kestrel::ApplicationStyle::install();
    const kestrel::Translation translation;
    kestrel::KestrelApp app;
    return app.run();
}
