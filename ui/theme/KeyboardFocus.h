#pragma once

#include <QObject>

class QWidget;

namespace kestrel {

/// Tells whether the focus is to be shown, which it is while the user works with the keyboard, not
/// the mouse (as :focus-visible does). Main thread.
class KeyboardFocus : public QObject {
    Q_OBJECT

  public:
    /// Returns whether the widget has the focus and is to draw its focus ring.
    static bool isShownOn(const QWidget& widget);

    /// Installs the event filter on the application, once; `isShownOn` does it too. Input before
    /// that is not seen.
    static void watch();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    using QObject::QObject;

    static KeyboardFocus* instance();

    bool isKeyboardInUse_ = false;
};

} // namespace kestrel
