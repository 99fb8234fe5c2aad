#pragma once

#include <QObject>
#include <QTimer>

namespace kestrel::bench {

/// Waits for the paint events of a window, which must outlive it. Main thread. Requires: a
/// QApplication. A frame that takes more than ten seconds is a fatal error.
class FrameWatch : public QObject {
  public:
    explicit FrameWatch(QObject& window);

    /// Runs the event loop until the next paint event of the window.
    void waitForFrame();

    /// Runs the event loop for 200 ms.
    static void settle();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QObject& window_;
    QTimer deadline_;
    bool isPainted_ = false;
};

} // namespace kestrel::bench
