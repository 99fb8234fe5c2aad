#include "DialogCatcher.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <utility>

namespace kestrel::test {

namespace {

constexpr int intervalMilliseconds = 5;
constexpr int maximumPollCount = 20000 / intervalMilliseconds;

} // namespace

DialogCatcher::DialogCatcher(Action action) : action_(std::move(action)) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { poll(); });
    timer_.start(intervalMilliseconds);
}

void DialogCatcher::poll() {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialog != nullptr && dialog != current_ && dialog->isVisible()) {
        ++count_;
        current_ = dialog;
        QObject::connect(dialog, &QObject::destroyed, &timer_, [this] { current_ = nullptr; });
        action_(*dialog);
    }
    if (++pollCount_ > maximumPollCount && current_ != nullptr) {
        ADD_FAILURE() << "the dialog stays open";
        current_->reject();
    }
}

} // namespace kestrel::test
