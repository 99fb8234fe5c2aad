#pragma once

#include <QObject>

#include <functional>

class QWidget;

namespace kestrel {

/// Calls `afterwards` once, after the widget's first paint event: for work that must not delay the
/// first frame. Owned by the widget. Main thread.
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
