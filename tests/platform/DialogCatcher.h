#pragma once

#include <QFileDialog>
#include <QTimer>

#include <functional>

namespace kestrel::test {

/// Polls for an open QFileDialog in a nested event loop and calls the action with it, which must
/// close it, at once or later. A dialog that is still open at the timeout fails the test and is
/// rejected.
class DialogCatcher {
  public:
    using Action = std::function<void(QFileDialog&)>;

    /// Without an action, dialogs are rejected.
    explicit DialogCatcher(Action action = &QDialog::reject);

    /// How many dialogs have been caught.
    int count() const { return count_; }

  private:
    void poll();

    Action action_;
    QTimer timer_;
    QFileDialog* current_ = nullptr;
    int count_ = 0;
    int pollCount_ = 0;
};

} // namespace kestrel::test
