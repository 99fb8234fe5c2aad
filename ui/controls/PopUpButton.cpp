#include "PopUpButton.h"

#include "ControlStyle.h"
#include "KeyboardFocus.h"
#include "UserInputFilter.h"

#include <QKeyEvent>

namespace kestrel {

PopUpButton::PopUpButton(QWidget* parent) : QComboBox(parent) {
    setStyle(ControlStyle::shared());
    setFocusPolicy(Qt::StrongFocus);
    KeyboardFocus::watch();
}

void PopUpButton::showPopup() {
    // AT-SPI reaches the picker behind a panel, too.
    if (!isUserInputBlocked(*this)) {
        QComboBox::showPopup();
    }
}

void PopUpButton::keyPressEvent(QKeyEvent* event) {
    // Qt 6.4 to 6.11 leave Enter to a dialog's default button, and there is no dialog.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        showPopup();
        return;
    }
    QComboBox::keyPressEvent(event);
}

void PopUpButton::wheelEvent(QWheelEvent* event) {
    // An accidental wheel event must not change a setting.
    event->ignore();
}

} // namespace kestrel
