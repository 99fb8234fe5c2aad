#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace kestrel {

/// Calls `afterwards` once, after the window's first frame is on the screen: for work that must not
/// delay it. Owned by the window. Main thread.
class FirstFrame final : public QObject {
    Q_OBJECT

  public:
    FirstFrame(QWidget& window, std::function<void()> afterwards);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    std::function<void()> afterwards_;
};

} // namespace kestrel
