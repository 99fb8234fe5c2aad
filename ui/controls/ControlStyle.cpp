#include "ControlStyle.h"

#include "ContinuousRectangle.h"
#include "FocusRing.h"
#include "KeyboardFocus.h"
#include "ShapePainting.h"
#include "TextDrawing.h"
#include "ThemeColor.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPointer>
#include <QStyleOption>

#include <algorithm>

namespace kestrel {
namespace {

constexpr int thumbSize = 18;
constexpr int trackHeight = 4;
constexpr int sliderHeight = 24;

constexpr int scrollBarWidth = 12;
constexpr int minScrollHandle = 36;

constexpr int comboBoxHeight = 28;
constexpr int comboBoxRadius = 7;
constexpr int comboBoxPadding = 10;
constexpr int comboBoxIndicator = 20;

QColor colorOf(ThemeColor::Name name, double opacity, const QStyleOption& option) {
    return ThemeColor(name).withOpacity(opacity).color(option.palette);
}

bool isEnabled(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_Enabled);
}

QPainterPath ellipse(const QRectF& rect) {
    QPainterPath path;
    path.addEllipse(rect);
    return path;
}

void fillCapsule(QPainter& painter, const QRectF& rect, const QColor& color) {
    const double radius = std::min(rect.width(), rect.height()) / 2;
    QPainterPath capsule;
    capsule.addRoundedRect(rect, radius, radius);
    fillShape(painter, capsule, color);
}

void drawSlider(QPainter& painter, const QStyleOptionSlider& option, const QRect& thumb,
                bool hasFocusRing) {
    const double y = QRectF(thumb).center().y();
    const QRectF track(option.rect.left() + 1, y - trackHeight / 2.0, option.rect.width() - 2,
                       trackHeight);
    QRectF filled = track;
    if (option.upsideDown) {
        filled.setLeft(thumb.center().x());
    } else {
        filled.setRight(thumb.center().x());
    }
    const double opacity = isEnabled(option) ? 1 : disabledOpacity;
    fillCapsule(painter, track, colorOf(ThemeColor::Name::primary, 0.18 * opacity, option));
    fillCapsule(painter, filled, colorOf(ThemeColor::Name::purple, opacity, option));

    QRectF knob = QRectF(thumb).adjusted(1, 1, -1, -1);
    if (hasFocusRing) {
        strokeShape(painter, ellipse(knob), QPen(colorOf(ThemeColor::Name::purple, 1, option), 2));
        knob.adjust(1, 1, -1, -1);
    }
    const bool isPressed = option.state.testFlag(QStyle::State_Sunken);
    fillShape(painter, ellipse(knob), isPressed ? QColor(0xE4, 0xE4, 0xEA) : QColor(Qt::white));
    if (!hasFocusRing) {
        strokeShape(painter, ellipse(knob), QPen(QColor(0, 0, 0, 70), 1));
    }
}

void drawScrollBar(QPainter& painter, const QStyleOptionSlider& option, const QRect& handle) {
    if (option.minimum == option.maximum) {
        return;
    }
    const bool isActive = option.state.testFlag(QStyle::State_MouseOver) ||
                          option.state.testFlag(QStyle::State_Sunken);
    const int inset = isActive ? 2 : 3;
    const QRect shown = option.orientation == Qt::Vertical ? handle.adjusted(inset, 2, -inset, -2)
                                                           : handle.adjusted(2, inset, -2, -inset);
    fillCapsule(painter, shown, colorOf(ThemeColor::Name::primary, isActive ? 0.7 : 0.55, option));
}

/// The combo box indicator: one chevron up, one down.
void drawChevrons(QPainter& painter, const QRectF& box, const QColor& color) {
    constexpr double halfWidth = 3;
    constexpr double height = 3;
    constexpr double gap = 2;
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    const QPointF center = box.center();
    for (const double side : {-1.0, 1.0}) {
        const double base = center.y() + side * gap;
        painter.drawPolyline(QPolygonF({{center.x() - halfWidth, base},
                                        {center.x(), base + side * height},
                                        {center.x() + halfWidth, base}}));
    }
}

void drawComboBox(QPainter& painter, const QStyleOptionComboBox& option, const QRect& indicator,
                  bool hasFocusRing) {
    const bool isHovered = option.state.testFlag(QStyle::State_MouseOver) && isEnabled(option);
    const double opacity = isEnabled(option) ? 1 : disabledOpacity;
    const QRectF area = option.rect;
    fillShape(painter, continuousRectangle(area, comboBoxRadius),
              colorOf(ThemeColor::Name::primary, (isHovered ? 0.17 : 0.12) * opacity, option));

    const QRectF badge = QRectF(indicator).adjusted(0, 4, 0, -4);
    fillShape(painter, continuousRectangle(badge, comboBoxRadius - 2),
              isEnabled(option) ? colorOf(ThemeColor::Name::purpleFill, 1, option)
                                : colorOf(ThemeColor::Name::primary, 0.1, option));
    drawChevrons(painter, badge, colorOf(ThemeColor::Name::white, opacity, option));
    if (hasFocusRing) {
        drawFocusRing(painter, area, comboBoxRadius, colorOf(ThemeColor::Name::purple, 1, option));
    }
}

void drawComboBoxLabel(QPainter& painter, const QStyleOptionComboBox& option, const QRect& text) {
    const double opacity = isEnabled(option) ? 1 : disabledOpacity;
    painter.setPen(colorOf(ThemeColor::Name::primary, opacity, option));
    drawAligned(painter, text, option.direction, Qt::AlignLeft | Qt::AlignVCenter,
                option.currentText);
}

void drawProgressBar(QPainter& painter, const QStyleOptionProgressBar& option) {
    const QRectF track = option.rect;
    fillCapsule(painter, track, colorOf(ThemeColor::Name::primary, 0.12, option));
    const double range = std::max(1, option.maximum - option.minimum);
    const double fraction = std::clamp((option.progress - option.minimum) / range, 0.0, 1.0);
    if (fraction <= 0) {
        return;
    }
    QRectF done = track;
    done.setWidth(std::max(track.height(), track.width() * fraction));
    if (option.direction == Qt::RightToLeft) {
        done.moveRight(track.right());
    }
    fillCapsule(painter, done, colorOf(ThemeColor::Name::purple, 1, option));
}

QRect sliderRect(const QStyleOptionSlider& option, QStyle::SubControl subControl) {
    if (subControl == QStyle::SC_SliderGroove) {
        return option.rect;
    }
    const int offset =
        QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                        option.rect.width() - thumbSize, option.upsideDown);
    return {option.rect.left() + offset, option.rect.top() + (option.rect.height() - thumbSize) / 2,
            thumbSize, thumbSize};
}

QRect scrollBarRect(const QStyleOptionSlider& option, QStyle::SubControl subControl) {
    const bool isVertical = option.orientation == Qt::Vertical;
    const int length = isVertical ? option.rect.height() : option.rect.width();
    const qint64 range = static_cast<qint64>(option.maximum) - option.minimum;
    const qint64 all = range + option.pageStep;
    const auto share = all > 0 ? static_cast<int>(qint64{length} * option.pageStep / all) : length;
    const int handle = std::min(length, std::max(share, minScrollHandle));
    const int start = QStyle::sliderPositionFromValue(option.minimum, option.maximum,
                                                      option.sliderPosition, length - handle);
    const auto along = [&option, isVertical](int from, int size) {
        return isVertical
                   ? QRect(option.rect.left(), option.rect.top() + from, option.rect.width(), size)
                   : QRect(option.rect.left() + from, option.rect.top(), size,
                           option.rect.height());
    };
    switch (subControl) {
    case QStyle::SC_ScrollBarGroove:
        return option.rect;
    case QStyle::SC_ScrollBarSlider:
        return along(start, handle);
    case QStyle::SC_ScrollBarSubPage:
        return along(0, start);
    case QStyle::SC_ScrollBarAddPage:
        return along(start + handle, length - start - handle);
    default:
        return {};
    }
}

QRect comboBoxRect(const QStyleOptionComplex& option, QStyle::SubControl subControl) {
    const QRect& all = option.rect;
    QRect result = all;
    if (subControl == QStyle::SC_ComboBoxArrow) {
        result.setLeft(all.right() - comboBoxIndicator - 3);
        result.setWidth(comboBoxIndicator);
    } else if (subControl == QStyle::SC_ComboBoxEditField) {
        result.adjust(comboBoxPadding, 0, -comboBoxIndicator - comboBoxPadding, 0);
    } else {
        return result;
    }
    return QStyle::visualRect(option.direction, all, result);
}

} // namespace

ControlStyle::ControlStyle() {
    setParent(qApp);
}

ControlStyle* ControlStyle::shared() {
    static QPointer<ControlStyle> style;
    if (style == nullptr) {
        style = new ControlStyle;
    }
    return style;
}

void ControlStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                      QPainter* painter, const QWidget* widget) const {
    const bool hasFocusRing = widget != nullptr && KeyboardFocus::isShownOn(*widget);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option)) {
        if (control == CC_Slider) {
            drawSlider(*painter, *slider, sliderRect(*slider, SC_SliderHandle), hasFocusRing);
        } else if (control == CC_ScrollBar) {
            drawScrollBar(*painter, *slider, scrollBarRect(*slider, SC_ScrollBarSlider));
        }
    } else if (const auto* comboBox = qstyleoption_cast<const QStyleOptionComboBox*>(option)) {
        drawComboBox(*painter, *comboBox, comboBoxRect(*comboBox, SC_ComboBoxArrow), hasFocusRing);
    } else {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
    painter->restore();
}

void ControlStyle::drawControl(ControlElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option);
    const auto* comboBox = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (element == CE_ProgressBar && bar != nullptr) {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        drawProgressBar(*painter, *bar);
        painter->restore();
    } else if (element == CE_ComboBoxLabel && comboBox != nullptr) {
        drawComboBoxLabel(*painter, *comboBox, comboBoxRect(*comboBox, SC_ComboBoxEditField));
    } else {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

QRect ControlStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                   SubControl subControl, const QWidget* widget) const {
    const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_Slider && slider != nullptr &&
        (subControl == SC_SliderGroove || subControl == SC_SliderHandle)) {
        return sliderRect(*slider, subControl);
    }
    if (control == CC_ScrollBar && slider != nullptr) {
        return scrollBarRect(*slider, subControl);
    }
    if (control == CC_ComboBox && subControl != SC_ComboBoxListBoxPopup) {
        return comboBoxRect(*option, subControl);
    }
    return QProxyStyle::subControlRect(control, option, subControl, widget);
}

QSize ControlStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                     const QSize& size, const QWidget* widget) const {
    switch (type) {
    case CT_ComboBox:
        return {size.width() + comboBoxIndicator + 2 * comboBoxPadding,
                std::max(comboBoxHeight, size.height() + 8)};
    case CT_Slider:
        return {size.width(), sliderHeight};
    default:
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    }
}

int ControlStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                              const QWidget* widget) const {
    switch (metric) {
    case PM_SliderThickness:
    case PM_SliderControlThickness:
        return sliderHeight;
    case PM_SliderLength:
        return thumbSize;
    case PM_ScrollBarExtent:
        return scrollBarWidth;
    case PM_ScrollBarSliderMin:
        return minScrollHandle;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int ControlStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                            QStyleHintReturn* result) const {
    switch (hint) {
    case SH_Slider_AbsoluteSetButtons:
        return Qt::LeftButton;
    case SH_Slider_PageSetButtons:
        return Qt::NoButton;
    case SH_ScrollBar_Transient:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

} // namespace kestrel
