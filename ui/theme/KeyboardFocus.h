#pragma once

#include <QObject>

class QColor;
class QPainter;
class QRectF;
class QWidget;

namespace kestrel {

/// Knows whether the user works with the keyboard: who clicks sees where they click and needs no
/// mark around the focus. One for the program, made with the first question.
class KeyboardFocus : public QObject {
    Q_OBJECT

  public:
    /// Whether the widget has the focus and is to show it.
    static bool isShownOn(const QWidget& widget);

    /// Starts to watch the input. Questions asked before have the answer no.
    static void watch();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    using QObject::QObject;

    static KeyboardFocus* instance();

    bool isKeyboardInUse_ = false;
};

/// Draws the mark of the keyboard focus just inside a rectangle with rounded corners.
void drawFocusRing(QPainter& painter, const QRectF& rect, double radius, const QColor& color);

} // namespace kestrel
