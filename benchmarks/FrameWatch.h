#pragma once

#include <QObject>
#include <QTimer>

namespace kestrel::bench {

/// Tells when a window, which must outlive it, has painted. Main thread; needs a QApplication. A
/// frame that does not come within ten seconds ends the program.
class FrameWatch : public QObject {
  public:
    explicit FrameWatch(QObject& window);

    /// Runs the event loop until the window has painted something since the call.
    void waitForFrame();

    /// Runs the event loop until nothing is left to be done now.
    static void settle();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QObject& window_;
    QTimer deadline_;
    bool isPainted_ = false;
};

} // namespace kestrel::bench
