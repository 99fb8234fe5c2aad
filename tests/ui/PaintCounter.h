#pragma once

#include <QEvent>
#include <QObject>
#include <QWidget>

namespace kestrel {

/// Counts the paint events of a widget.
class PaintCounter : public QObject {
  public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }

    int count = 0;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

} // namespace kestrel
