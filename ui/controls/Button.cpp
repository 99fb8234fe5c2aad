#include "Button.h"

#include "ApplicationFont.h"
#include "ColorScheme.h"
#include "ContinuousRectangle.h"
#include "FocusRing.h"
#include "KeyboardFocus.h"
#include "ShapePainting.h"
#include "TextDrawing.h"
#include "UserInputFilter.h"

#include <QCoreApplication>
#include <QCursor>
#include <QEvent>
#include <QMetaObject>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace kestrel {
namespace {

constexpr int symbolGap = 6;

struct Metrics {
    int minHeight;
    int verticalPadding;
    int horizontalPadding;
    double radius;
};

Metrics metricsOf(Button::Variant variant, Button::ControlSize size) {
    if (variant == Button::Variant::plain) {
        return {24, 2, 4, 6};
    }
    if (size == Button::ControlSize::large) {
        return {36, 9, 16, 9};
    }
    return {30, 6, 13, 7};
}

QColor blended(const QColor& below, const QColor& above, double share) {
    const auto mix = [share](float a, float b) {
        return static_cast<float>(a * (1 - share) + b * share);
    };
    return QColor::fromRgbF(mix(below.redF(), above.redF()), mix(below.greenF(), above.greenF()),
                            mix(below.blueF(), above.blueF()));
}

} // namespace

Button::Button(Variant variant, const QString& text, QWidget* parent)
    : QPushButton(text, parent), variant_(variant) {
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    // In Qt 6.4 to 6.11, Enter presses only auto-default buttons.
    setAutoDefault(true);
    if (variant == Variant::prominent) {
        setThemeColor(ThemeColor::Name::white);
        textFont_.weight = QFont::DemiBold;
    }
    setFont(textFont_.font());
    KeyboardFocus::watch();
    connect(ApplicationFont::shared(), &ApplicationFont::changed, this,
            [this] { setTextFont(textFont_); });
}

void Button::setSymbol(Symbol symbol) {
    symbol_ = symbol;
    updateGeometry();
    update();
}

void Button::setTextFont(const TextFont& font) {
    textFont_ = font;
    setFont(textFont_.font());
    updateGeometry();
}

void Button::setThemeColor(ThemeColor color) {
    themeColor_ = color;
    update();
}

void Button::setControlSize(ControlSize size) {
    controlSize_ = size;
    updateGeometry();
}

void Button::setMinimumLabelWidth(int width) {
    minimumLabelWidth_ = width;
    updateGeometry();
}

void Button::markDestructive() {
    setThemeColor(ThemeColor::Name::red);
}

void Button::postClick() {
    const auto clickUnlessDiscarded = [this, count = discardCount_] {
        if (count == discardCount_ && isVisible() && !isUserInputBlocked(*this)) {
            click();
        }
    };
    QMetaObject::invokeMethod(this, clickUnlessDiscarded, Qt::QueuedConnection);
}

void Button::discardPress() {
    ++discardCount_;
    setDown(false);
}

int Button::padding() const {
    return metricsOf(variant_, controlSize_).horizontalPadding;
}

void Button::refreshHover() {
    // Qt 6.4 to 6.11 send Leave only with the next mouse move.
    if (underMouse() && !rect().contains(mapFromGlobal(QCursor::pos()))) {
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(this, &leave);
        update();
    }
}

double Button::cornerRadius() const {
    return metricsOf(variant_, controlSize_).radius;
}

int Button::labelWidth() const {
    int width = text().isEmpty() ? 0 : fontMetrics().horizontalAdvance(text()) + 1;
    if (symbol_) {
        width += symbolSize(font()) + (text().isEmpty() ? 0 : symbolGap);
    }
    return width;
}

QSize Button::sizeHint() const {
    const Metrics metrics = metricsOf(variant_, controlSize_);
    const int contents = std::max(lineHeight(font()), symbol_ ? symbolSize(font()) : 0);
    const int height = std::max(metrics.minHeight, contents + 2 * metrics.verticalPadding);
    return {std::max(labelWidth(), minimumLabelWidth_) + 2 * metrics.horizontalPadding, height};
}

QSize Button::minimumSizeHint() const {
    return sizeHint();
}

QColor Button::fillColor() const {
    const bool isHovered = isEnabled() && underMouse();
    const bool isPressed = isDown();
    const bool isDark = colorScheme(palette()) == ColorScheme::dark;
    const ThemeColor primary = ThemeColor::Name::primary;
    if (variant_ == Variant::plain || !isEnabled()) {
        double opacity = isPressed ? 0.14 : isHovered ? 0.07 : 0.0;
        if (variant_ != Variant::plain) {
            opacity = 0.08;
        }
        return primary.withOpacity(opacity).color(palette());
    }
    if (variant_ == Variant::bordered) {
        if (isDark) {
            // A pressed button sinks: on a lighter fill a red label would lack contrast.
            return primary.withOpacity(isPressed ? 0.02 : isHovered ? 0.09 : 0.06).color(palette());
        }
        const QColor fill = blended(palette().color(QPalette::Window), Qt::white, 0.8);
        return blended(fill, palette().color(QPalette::WindowText),
                       isPressed   ? 0.1
                       : isHovered ? 0.05
                                   : 0);
    }
    const QColor fill = ThemeColor(ThemeColor::Name::purpleFill).color(palette());
    return isPressed   ? blended(fill, Qt::black, 0.18)
           : isHovered ? blended(fill, Qt::white, 0.07)
                       : fill;
}

QColor Button::labelColor() const {
    if (isEnabled()) {
        return themeColor_.color(palette());
    }
    return ThemeColor(ThemeColor::Name::primary).withOpacity(disabledOpacity).color(palette());
}

void Button::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawBackground(painter);
    drawLabel(painter);
}

void Button::drawBackground(QPainter& painter) {
    const QRectF area = rect();
    if (const QColor fill = fillColor(); fill.alpha() > 0) {
        fillShape(painter, continuousRectangle(area, cornerRadius()), fill);
    }
    if (variant_ == Variant::bordered) {
        strokeShape(painter,
                    continuousRectangle(area.adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius()),
                    separatorColor(palette()));
    }
    if (!KeyboardFocus::isShownOn(*this)) {
        return;
    }
    if (variant_ == Variant::prominent) {
        constexpr double gap = 2;
        drawFocusRing(painter, area.adjusted(gap, gap, -gap, -gap), cornerRadius() - gap,
                      Qt::white);
    } else {
        drawFocusRing(painter, area, cornerRadius(),
                      ThemeColor(ThemeColor::Name::purple).color(palette()));
    }
}

void Button::drawLabel(QPainter& painter) {
    const QColor color = labelColor();
    const int symbolSide = symbol_ ? symbolSize(font()) : 0;
    QRect label(0, 0, std::min(labelWidth(), width() - 2 * std::min(padding(), 4)), height());
    label.moveCenter(rect().center());
    QRect symbolBox(label.left(), 0, symbolSide, height());
    QRect textBox = label.adjusted(symbolSide + (symbol_ ? symbolGap : 0), 0, 0, 0);
    if (text().isEmpty()) {
        symbolBox = rect();
    }
    symbolBox = QStyle::visualRect(layoutDirection(), rect(), symbolBox);
    textBox = QStyle::visualRect(layoutDirection(), rect(), textBox);
    if (symbol_) {
        drawSymbol(painter, symbolBox, *symbol_, symbolSide, color);
    }
    painter.setPen(color);
    drawAligned(painter, textBox, layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter, text());
}

} // namespace kestrel
