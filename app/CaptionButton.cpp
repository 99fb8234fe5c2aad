#include "CaptionButton.h"

#include "ContinuousRectangle.h"
#include "FocusRing.h"
#include "KeyboardFocus.h"
#include "ThemeColor.h"

#include <QPainter>

namespace kestrel {
namespace {

constexpr QSize buttonSize(36, 28);
constexpr int backgroundInset = 3;
constexpr double backgroundRadius = 6;
constexpr int glyphSize = 10;
constexpr double lineWidth = 1.5;
/// From the edge of a line to its middle: a line whose edge is on a whole pixel is sharpest, at
/// every integer device pixel ratio.
constexpr double halfLine = lineWidth / 2;

void drawMinimise(QPainter& painter, const QRectF& box) {
    const double y = box.center().y() + halfLine;
    painter.drawLine(QPointF(box.left() + halfLine, y), QPointF(box.right() - halfLine, y));
}

void drawMaximise(QPainter& painter, const QRectF& box) {
    painter.drawRoundedRect(box.adjusted(halfLine, halfLine, -halfLine, -halfLine), 1, 1);
}

/// Two overlapping windows; slightly enlarged, or the front one would be too small.
void drawRestore(QPainter& painter, const QRectF& glyphBox) {
    constexpr double shift = 3;
    const QRectF box = glyphBox.adjusted(-1, 0, 0, 1);
    drawMaximise(painter, box.adjusted(0, shift, -shift, 0));
    const double right = box.right() - halfLine;
    const double top = box.top() + halfLine;
    painter.drawPolyline(QPolygonF({{box.left() + shift + halfLine, top},
                                    {right, top},
                                    {right, box.bottom() - shift - halfLine}}));
}

void drawClose(QPainter& painter, const QRectF& box) {
    const QRectF ends = box.adjusted(halfLine, halfLine, -halfLine, -halfLine);
    painter.drawLine(ends.topLeft(), ends.bottomRight());
    painter.drawLine(ends.topRight(), ends.bottomLeft());
}

} // namespace

CaptionButton::CaptionButton(Action action, QWidget* parent)
    : Button(Variant::plain, {}, parent), action_(action) {
    refreshTitle();
}

void CaptionButton::setWindowMaximised(bool isMaximised) {
    isWindowMaximised_ = isMaximised;
    refreshTitle();
    update();
}

QSize CaptionButton::sizeHint() const {
    return buttonSize;
}

QString CaptionButton::title() const {
    switch (action_) {
    case Action::minimise:
        //: A button of the window.
        return tr("Minimise");
    case Action::maximise:
        if (isWindowMaximised_) {
            //: A button of a maximised window, which gives it its former size.
            return tr("Restore");
        }
        //: A button of the window.
        return tr("Maximise");
    case Action::close:
        break;
    }
    //: A button of the window.
    return tr("Close");
}

void CaptionButton::refreshTitle() {
    setAccessibleName(title());
    setToolTip(title());
}

bool CaptionButton::isCloseHighlighted() const {
    return action_ == Action::close && (underMouse() || isDown());
}

void CaptionButton::drawBackground(QPainter& painter) {
    QColor fill = Qt::transparent;
    if (isCloseHighlighted()) {
        const QColor red = ThemeColor(ThemeColor::Name::redFill).color(palette());
        fill = isDown() ? red.darker(120) : red;
    } else if (isDown() || underMouse()) {
        fill = ThemeColor(ThemeColor::Name::primary)
                   .withOpacity(isDown() ? 0.14 : 0.07)
                   .color(palette());
    }
    const QRectF area =
        rect().adjusted(backgroundInset, backgroundInset, -backgroundInset, -backgroundInset);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawPath(continuousRectangle(area, backgroundRadius));
    if (KeyboardFocus::isShownOn(*this)) {
        const ThemeColor ring =
            isCloseHighlighted() ? ThemeColor::Name::white : ThemeColor::Name::purple;
        drawFocusRing(painter, area, backgroundRadius, ring.color(palette()));
    }
}

void CaptionButton::drawLabel(QPainter& painter) {
    const ThemeColor foreground =
        isCloseHighlighted() ? ThemeColor::Name::white : ThemeColor::Name::primary;
    painter.setPen(
        QPen(foreground.color(palette()), lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    QRect box(0, 0, glyphSize, glyphSize);
    box.moveCenter(rect().center());
    switch (action_) {
    case Action::minimise:
        drawMinimise(painter, box);
        break;
    case Action::maximise:
        (isWindowMaximised_ ? drawRestore : drawMaximise)(painter, box);
        break;
    case Action::close:
        drawClose(painter, box);
        break;
    }
}

} // namespace kestrel
