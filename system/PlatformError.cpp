#include "PlatformError.h"

#include "BidiText.h"

#include <QCoreApplication>
#include <QString>

#include <string>

namespace kestrel {

namespace {

/// Fills in the translated sentence. The parts of one from right to left are bidi-isolated.
std::string text(const char* sentence, const FileURL& url, std::error_code reason) {
    const QString pattern = QCoreApplication::translate("kestrel::PlatformError", sentence);
    QString path = QString::fromUtf8(url.path().data(), static_cast<qsizetype>(url.path().size()));
    QString cause = qt_error_string(reason.value());
    if (pattern.isRightToLeft()) {
        path = bidiIsolated(path);
        cause = bidiIsolated(cause);
    }
    return pattern.arg(path, cause).toStdString();
}

} // namespace

PlatformError::PlatformError(const char* sentence, const FileURL& url, std::error_code reason)
    : std::runtime_error(text(sentence, url, reason)), code_(reason) {}

PlatformError PlatformError::folderNotCreated(const FileURL& folder, std::error_code reason) {
    return {
        //: The path of a folder, and the system's error message.
        QT_TRANSLATE_NOOP("kestrel::PlatformError", "The folder “%1” could not be created: %2."),
        folder, reason};
}

PlatformError PlatformError::programNotStarted(const FileURL& program, std::error_code reason) {
    return {
        //: The path of a program, and the system's error message.
        QT_TRANSLATE_NOOP("kestrel::PlatformError", "The program “%1” could not be started: %2."),
        program, reason};
}

PlatformError PlatformError::programLost(const FileURL& program, std::error_code reason) {
    //: The path of a program, and the system's error message.
    return {QT_TRANSLATE_NOOP("kestrel::PlatformError",
                              "The connection to the program “%1” was lost: %2."),
            program, reason};
}

} // namespace kestrel
