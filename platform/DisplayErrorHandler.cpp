#include "DisplayErrorHandler.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <utility>
#include <vector>

namespace kestrel {

namespace {

struct Message {
    QtMsgType type;
    QByteArray category;
    QString text;
};

/// Guards `deferred`: Qt's own threads log too.
std::mutex mutex;
std::vector<Message> deferred;

bool isSet(const char* variable) {
    return !qEnvironmentVariableIsEmpty(variable);
}

/// Whether the message says why the display could not be opened. Under "qt.qpa.plugin", Qt also
/// logs that the platform plugin could not be loaded, and which packages it needs.
bool isCause(const Message& message) {
    return message.category != "qt.qpa.plugin" ||
           message.text.startsWith(QStringLiteral("Could not find"));
}

QString displayError() {
    if (!isSet("WAYLAND_DISPLAY") && !isSet("DISPLAY") && !isSet("QT_QPA_PLATFORM")) {
        return QStringLiteral("no display: neither WAYLAND_DISPLAY nor DISPLAY is set");
    }
    const bool hasCause = std::any_of(deferred.begin(), deferred.end(), isCause);
    QStringList causes;
    for (const Message& message : deferred) {
        if (!hasCause || isCause(message)) {
            causes << message.text.simplified();
        }
    }
    if (causes.isEmpty()) {
        return QStringLiteral("cannot open the display");
    }
    return QStringLiteral("cannot open the display: ") + causes.join(QStringLiteral("; "));
}

void handle(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    const std::lock_guard lock(mutex);
    if (type != QtFatalMsg) {
        deferred.push_back({type, context.category, text});
        return;
    }
    // Not translated: translators are installed after the application object is constructed.
    static_cast<void>(
        std::fprintf(stderr, "kestrel: %s\n", displayError().toLocal8Bit().constData()));
    static_cast<void>(std::fflush(stderr));
    std::_Exit(EXIT_FAILURE);
}

} // namespace

DisplayErrorHandler::DisplayErrorHandler() : previous_(qInstallMessageHandler(handle)) {}

DisplayErrorHandler::~DisplayErrorHandler() {
    qInstallMessageHandler(previous_);
    const std::lock_guard lock(mutex);
    for (const Message& message : std::exchange(deferred, {})) {
        const QMessageLogContext context(nullptr, 0, nullptr, message.category.constData());
        previous_(message.type, context, message.text);
    }
}

} // namespace kestrel
