#include "BatchPresence.h"

#include <QApplication>
#include <QMetaMethod>
#include <QWidget>
#include <QWindow>

#include <chrono>
#include <utility>

namespace kestrel {

namespace {

/// At most five signals in any second: timers fire up to a twentieth early, and the last signal,
/// which hides the progress, does not wait.
constexpr std::chrono::milliseconds updateInterval{300};

} // namespace

BatchPresence::BatchPresence(std::shared_ptr<ConverterViewModel> model, QWidget* window)
    : QObject(window), model_(std::move(model)), window_(window) {
    updatePause_.setSingleShot(true);
    connect(&updatePause_, &QTimer::timeout, this, [this] {
        if (isUpdateDue_) {
            updateProgress();
        }
    });
    connect(model_.get(), &ConverterViewModel::willChange, this, &BatchPresence::scheduleRefresh);
}

void BatchPresence::scheduleRefresh() {
    if (isRefreshScheduled_) {
        return;
    }
    // `willChange` is emitted before the write; the queued refresh runs after it.
    isRefreshScheduled_ = true;
    QMetaObject::invokeMethod(this, &BatchPresence::refresh, Qt::QueuedConnection);
}

void BatchPresence::refresh() {
    isRefreshScheduled_ = false;
    const bool isConverting = model_->isConverting();
    if (isConverting && !held_) {
        withdrawAttention();
        //: Why the machine stays awake, where the desktop lists the reasons.
        held_.emplace(tr("Converting audio files"));
    } else if (!isConverting && held_) {
        held_.reset();
        if (!model_->isStopRequested()) {
            requestAttention();
        }
    }
    isUpdateDue_ = isConverting;
    if (isUpdateDue_ && !updatePause_.isActive()) {
        updateProgress();
    }
}

void BatchPresence::updateProgress() {
    isUpdateDue_ = false;
    updatePause_.start(updateInterval);
    const double progress = model_->overallProgress();
    if (progress == held_->shownProgress) {
        return;
    }
    if (held_->progress.show(progress)) {
        held_->shownProgress = progress;
    } else {
        isUpdateDue_ = true;
    }
}

void BatchPresence::requestAttention() {
    // A panel or an alert of the program is active instead of the window.
    if (QGuiApplication::applicationState() != Qt::ApplicationActive) {
        constexpr int untilActive = 0;
        QApplication::alert(window_, untilActive);
    }
}

void BatchPresence::withdrawAttention() {
    // QApplication::alert has no counterpart. Qt 6.4 to 6.11 calls this private slot when an alert
    // with a time limit ends.
    constexpr auto slot = "_q_clearAlert()";
    QWindow* window = window_->windowHandle();
    const int index = window != nullptr ? window->metaObject()->indexOfSlot(slot) : -1;
    if (index >= 0) {
        window->metaObject()->method(index).invoke(window);
    }
}

} // namespace kestrel
