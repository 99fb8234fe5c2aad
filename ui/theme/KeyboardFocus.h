#pragma once

#include <QObject>

class QWidget;

namespace kestrel {

/// Tracks whether the last input was by keyboard or mouse: only keyboard focus is shown, as with
/// :focus-visible. Main thread.
class KeyboardFocus : public QObject {
    Q_OBJECT

  public:
    /// Returns whether the widget is to draw its focus ring.
    static bool isShownOn(const QWidget& widget);

    /// Installs the application's event filter if needed, as `isShownOn` does. Earlier input is
    /// unknown.
    static void watch();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    using QObject::QObject;

    static KeyboardFocus* instance();

    bool isKeyboardInUse_ = false;
};

} // namespace kestrel
