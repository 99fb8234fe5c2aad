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

/// Qt's own threads may write messages too.
std::mutex lock;
std::vector<Message> heldBack;

bool isSet(const char* variable) {
    return !qEnvironmentVariableIsEmpty(variable);
}

/// Whether it says why a display could not be opened. Of a platform plugin that reports this, Qt
/// also says that it could not be loaded, and which packages it would need.
bool isCause(const Message& message) {
    return message.category != "qt.qpa.plugin" ||
           message.text.startsWith(QStringLiteral("Could not find"));
}

QString whatIsMissing() {
    if (!isSet("WAYLAND_DISPLAY") && !isSet("DISPLAY") && !isSet("QT_QPA_PLATFORM")) {
        return QStringLiteral("no display: neither WAYLAND_DISPLAY nor DISPLAY is set");
    }
    const bool hasCause = std::any_of(heldBack.begin(), heldBack.end(), isCause);
    QStringList causes;
    for (const Message& message : heldBack) {
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
    const std::lock_guard guard(lock);
    if (type != QtFatalMsg) {
        heldBack.push_back({type, context.category, text});
        return;
    }
    // No translation is installed before there is an application object.
    static_cast<void>(
        std::fprintf(stderr, "kestrel: %s\n", whatIsMissing().toLocal8Bit().constData()));
    static_cast<void>(std::fflush(stderr));
    std::_Exit(EXIT_FAILURE);
}

} // namespace

DisplayErrorHandler::DisplayErrorHandler() : previous_(qInstallMessageHandler(handle)) {}

DisplayErrorHandler::~DisplayErrorHandler() {
    qInstallMessageHandler(previous_);
    const std::lock_guard guard(lock);
    for (const Message& message : std::exchange(heldBack, {})) {
        const QMessageLogContext context(nullptr, 0, nullptr, message.category.constData());
        previous_(message.type, context, message.text);
    }
}

} // namespace kestrel
