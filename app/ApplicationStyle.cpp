#include "ApplicationStyle.h"

#include "ThemeColor.h"

#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QWidget>

namespace kestrel {
namespace {

/// Qt's own tool tip colour, light yellow, which tool tips have where the desktop names none.
constexpr QColor qtToolTipBase(255, 255, 220);

} // namespace

void ApplicationStyle::install() {
    QApplication::setStyle(new ApplicationStyle(QApplication::style()));
}

void ApplicationStyle::polish(QPalette& palette) {
    QProxyStyle::polish(palette);
    setHighlight(palette);
}

void ApplicationStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    QPalette palette = widget->palette();
    if (widget->inherits("QTipLabel") && palette.color(QPalette::ToolTipBase) == qtToolTipBase) {
        palette.setColor(QPalette::ToolTipBase, QApplication::palette().color(QPalette::Base));
        palette.setColor(QPalette::ToolTipText, QApplication::palette().color(QPalette::Text));
        widget->setPalette(palette);
    }
}

QIcon ApplicationStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                                     const QWidget* widget) const {
    return icon == SP_ToolBarHorizontalExtensionButton
               ? QIcon()
               : QProxyStyle::standardIcon(icon, option, widget);
}

} // namespace kestrel
