#include "ApplicationStyle.h"
#include "DisplayErrorHandler.h"
#include "FontConfiguration.h"
#include "KestrelApp.h"
#include "StandardStreams.h"
#include "Translation.h"

#include <QApplication>

#include <optional>
#include <thread>

int main(int argc, char** argv) {
    kestrel::redirectMissingStandardStreams();
    // Takes as long as connecting to the window system.
    std::jthread fonts = kestrel::readFontConfiguration();
    kestrel::KestrelApp::prepare();
    std::optional<kestrel::DisplayErrorHandler> displayErrors(std::in_place);
    const QApplication application(argc, argv);
    displayErrors.reset();
    fonts = {};
    kestrel::ApplicationStyle::install();
    const kestrel::Translation translation;
    kestrel::KestrelApp app;
    return app.run();
}
