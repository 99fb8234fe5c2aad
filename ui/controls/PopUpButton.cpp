#include "PopUpButton.h"

#include "ApplicationFont.h"
#include "ControlStyle.h"
#include "TextFont.h"
#include "UserInputFilter.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QPalette>

namespace kestrel {
namespace {

/// Returns the palette with every role set: Qt takes the others from the desktop's menus. The list
/// stands out from the window around its button.
QPalette listPalette(const QPalette& palette) {
    QPalette result(palette.windowText(), palette.button(), palette.light(), palette.dark(),
                    palette.mid(), palette.text(), palette.brightText(), palette.base(),
                    palette.base());
    result.setBrush(QPalette::Highlight, palette.highlight());
    result.setBrush(QPalette::HighlightedText, palette.highlightedText());
    return result;
}

} // namespace

PopUpButton::PopUpButton(QWidget* parent) : QComboBox(parent) {
    setStyle(ControlStyle::shared());
    setFocusPolicy(Qt::StrongFocus);
    setFont(TextFont{}.font());
    connect(ApplicationFont::shared(), &ApplicationFont::changed, this,
            [this] { setFont(TextFont{}.font()); });
    // Qt 6.4 exposes the choice as a value, which AT-SPI has as a number only.
    connect(this, &QComboBox::currentTextChanged, this, &QWidget::setAccessibleDescription);
}

void PopUpButton::showPopup() {
    // AT-SPI reaches the picker behind a panel, too.
    if (!isUserInputBlocked(*this)) {
        QComboBox::showPopup();
        view()->setPalette(listPalette(palette()));
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
