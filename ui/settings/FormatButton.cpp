#include "FormatButton.h"

#include "ContinuousRectangle.h"
#include "FocusRing.h"
#include "KeyboardFocus.h"
#include "ShapePainting.h"
#include "TextDrawing.h"
#include "TextFont.h"
#include "ThemeColor.h"

#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>

#include <utility>

namespace kestrel {
namespace {

constexpr int buttonHeight = 36;
constexpr int sidePadding = 12;
constexpr int symbolSpacing = 10;
constexpr int symbolWidth = 18;
constexpr double buttonRadius = 9;
constexpr double tintOpacity = 0.11;
constexpr double pressedOpacity = 0.75;

TextFont nameFont(bool isSelected) {
    return {TextStyle::subheadline, isSelected ? QFont::DemiBold : QFont::Normal};
}

} // namespace

FormatButton::FormatButton(OutputFormat format, std::function<void()> action, QWidget* parent)
    : Button(Variant::plain, {}, parent), format_(format) {
    setText(QString::fromUtf8(format.rawValue()));
    setAccessibleName(text());
    setCheckable(true);
    setFixedHeight(buttonHeight);
    setTextFont(nameFont(false));
    connect(this, &QPushButton::clicked, this, std::move(action));
}

void FormatButton::setSelected(bool isSelected) {
    const QSignalBlocker blocker(this);
    setChecked(isSelected);
    const TextFont wanted = nameFont(isSelected);
    if (font().weight() != wanted.weight) {
        setTextFont(wanted);
    }
}

Symbol FormatButton::symbol() const {
    if (format_ == OutputFormat::mp3) {
        return Symbol::musicNote;
    }
    return format_ == OutputFormat::aiff ? Symbol::waveformBadgeMagnifyingglass : Symbol::waveform;
}

void FormatButton::nextCheckState() {}

void FormatButton::drawBackground(QPainter& painter) {
    const QColor tint =
        ThemeColor(ThemeColor::Name::white).withOpacity(tintOpacity).color(palette());
    if (isChecked()) {
        fillShape(painter, continuousRectangle(rect(), buttonRadius), tint);
    } else if (underMouse() && isEnabled()) {
        // An outline: a fill would read as selected.
        painter.setPen(tint);
        painter.setBrush(Qt::NoBrush);
        painter.drawPath(
            continuousRectangle(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), buttonRadius));
    }
    if (KeyboardFocus::isShownOn(*this)) {
        drawFocusRing(painter, rect(), buttonRadius,
                      ThemeColor(ThemeColor::Name::purple).color(palette()));
    }
}

void FormatButton::drawLabel(QPainter& painter) {
    const QRect content = rect().adjusted(sidePadding, 0, -sidePadding, 0);
    const auto mirrored = [this](const QRect& box) {
        return QStyle::visualRect(layoutDirection(), rect(), box);
    };
    // A press shows in the label alone.
    const double opacity = isDown() ? pressedOpacity : 1;
    const QColor color =
        ThemeColor(ThemeColor::Name::primary).withOpacity(opacity).color(palette());
    QRect symbolBox = content;
    symbolBox.setWidth(symbolWidth);
    drawSymbol(painter, mirrored(symbolBox), symbol(), symbolWidth, color);

    painter.setPen(color);
    const QRect textBox = content.adjusted(symbolWidth + symbolSpacing, 0, 0, 0);
    drawAligned(painter, mirrored(textBox), layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter,
                text());
    if (isChecked()) {
        QRect checkBox = content;
        checkBox.setLeft(content.right() + 1 - symbolWidth);
        drawSymbol(painter, mirrored(checkBox), Symbol::checkmarkCircleFill, symbolWidth - 2,
                   ThemeColor(ThemeColor::Name::purple).withOpacity(opacity).color(palette()));
    }
}

} // namespace kestrel
