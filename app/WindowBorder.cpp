#include "WindowBorder.h"

#include "BandFill.h"
#include "ThemeColor.h"

#include <QPainter>
#include <QRegion>

namespace kestrel {

WindowBorder::WindowBorder(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void WindowBorder::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    for (const QRect& side : mask()) {
        fillInBands(painter, side, separatorColor(palette()));
    }
}

void WindowBorder::resizeEvent(QResizeEvent*) {
    // Masked to the border: repaints inside it do not involve this widget.
    constexpr int width = 1;
    setMask(QRegion(rect()) - QRegion(rect().adjusted(width, width, -width, -width)));
}

} // namespace kestrel
