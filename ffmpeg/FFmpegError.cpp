#include "FFmpegError.h"

#include <QCoreApplication>
#include <QString>

#include <utility>

namespace kestrel {

namespace {

std::string translated(const char* text) {
    return QCoreApplication::translate("kestrel::FFmpegError", text).toStdString();
}

} // namespace

FFmpegError::FFmpegError(Case which, std::string description)
    : case_(which), description_(std::move(description)) {}

FFmpegError FFmpegError::processFailed(std::string message) {
    if (message.empty()) {
        message = translated(
            QT_TRANSLATE_NOOP("kestrel::FFmpegError", "FFmpeg could not convert this file."));
    }
    return {Case::processFailed, std::move(message)};
}

FFmpegError FFmpegError::notFound() {
    return {Case::notFound,
            //: Ends in a command, which stays as it is.
            translated(QT_TRANSLATE_NOOP(
                "kestrel::FFmpegError",
                "FFmpeg was not found. Install it with Homebrew: brew install ffmpeg"))};
}

FFmpegError FFmpegError::cancelled() {
    return {Case::cancelled,
            translated(QT_TRANSLATE_NOOP("kestrel::FFmpegError", "Conversion cancelled."))};
}

} // namespace kestrel
