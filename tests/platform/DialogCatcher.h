#pragma once

#include <QFileDialog>
#include <QTimer>

#include <functional>

namespace kestrel::test {

/// Watches for Qt's file dialog while another event loop runs, and hands it over as soon
/// as it is open; it must be closed then, at once or later. A dialog that is still open when the
/// time is up fails the test and is dismissed.
class DialogCatcher {
  public:
    using Action = std::function<void(QFileDialog&)>;

    /// Without an action, dialogs are dismissed.
    explicit DialogCatcher(Action action = &QDialog::reject);

    /// How many dialogs have been caught.
    int count() const { return count_; }

  private:
    void look();

    Action action_;
    QTimer timer_;
    QFileDialog* current_ = nullptr;
    int count_ = 0;
    int looks_ = 0;
};

} // namespace kestrel::test
