#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace kestrel {

/// Does once, when the widget has been painted for the first time, what the first frame should not
/// wait for. Belongs to the widget. Main thread.
class FirstFrame final : public QObject {
    Q_OBJECT

  public:
    FirstFrame(QWidget& widget, std::function<void()> afterwards);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    std::function<void()> afterwards_;
};

} // namespace kestrel
