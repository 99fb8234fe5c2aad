#pragma once

#include "AppBadge.h"
#include "PaintRecorder.h"
#include "RunUntil.h"
#include "StatusDot.h"

#include <QAbstractButton>
#include <QProgressBar>
#include <QScrollBar>
#include <QSlider>
#include <QTest>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace kestrel {

/// Whether something painted is a glow around the program's badge, which is a decoration.
inline bool isGlow(const QWidget& widget, const Painted& painted) {
    for (const AppBadge* badge : widget.findChildren<AppBadge*>()) {
        constexpr int radius = 12;
        const QRect place(badge->mapTo(&widget, QPoint()), badge->size());
        if (painted.place == place.adjusted(-radius, -radius, radius, radius)) {
            return true;
        }
    }
    return false;
}

/// Whether an area must be told from what is beside it: the filled part of a bar, the thumb of a
/// slider, the handle of a scroll bar, a status dot. Not the track, and no background of a text.
inline bool isGlyph(const QWidget& part, const Painted& area) {
    if (qobject_cast<const QProgressBar*>(&part) != nullptr ||
        qobject_cast<const QSlider*>(&part) != nullptr) {
        constexpr int trackMargins = 2;
        return area.place.width() < part.width() - trackMargins;
    }
    if (qobject_cast<const QScrollBar*>(&part) != nullptr) {
        // Its background is as large as itself.
        return area.place.size() != part.size();
    }
    return qobject_cast<const StatusDot*>(&part) != nullptr;
}

/// The least contrast that WCAG 2.2 AA asks for, or none for disabled controls, separators, borders
/// and fills. Lines of more than one pixel are the glyphs, the focus rings and the outline of a
/// targeted drop zone.
inline std::optional<double> requiredContrast(const QWidget& widget, const Painted& painted,
                                              double textContrast) {
    constexpr double glyphContrast = 3;
    const QWidget* child = widget.childAt(painted.place.center());
    const QWidget& part = child != nullptr ? *child : widget;
    if (!part.isEnabled()) {
        return std::nullopt;
    }
    bool isRequired = false;
    switch (painted.kind) {
    case Painted::Kind::text:
        return textContrast;
    case Painted::Kind::symbol:
        isRequired = !isGlow(widget, painted);
        break;
    case Painted::Kind::line:
        isRequired = painted.lineWidth > 1;
        break;
    case Painted::Kind::area:
        isRequired = isGlyph(part, painted);
        break;
    }
    return isRequired ? std::optional(glyphContrast) : std::nullopt;
}

/// Checks each text and each glyph that the widget and its children paint; `textContrast` is what
/// texts must have. Returns those that were checked.
inline std::vector<Painted> expectContrast(QWidget& widget, double textContrast,
                                           const std::string& state) {
    std::vector<Painted> checked;
    for (const Painted& painted : paintedBy(widget, widget.rect())) {
        const std::optional<double> required = requiredContrast(widget, painted, textContrast);
        if (!required) {
            continue;
        }
        const QWidget* part = widget.childAt(painted.place.center());
        EXPECT_GE(painted.contrast, *required)
            << state << ": " << painted.color.name().toStdString() << " on "
            << painted.background.name().toStdString() << ", \"" << painted.text.toStdString()
            << "\" of a " << (part != nullptr ? part : &widget)->metaObject()->className() << " at "
            << painted.place.x() << ", " << painted.place.y();
        checked.push_back(painted);
    }
    return checked;
}

/// The texts among these, as UTF-8.
inline std::vector<std::string> textsOf(const std::vector<Painted>& all) {
    std::vector<std::string> texts;
    for (const Painted& painted : all) {
        if (painted.kind == Painted::Kind::text) {
            texts.push_back(painted.text.toStdString());
        }
    }
    return texts;
}

inline void setAllHovered(const QWidget& widget, bool isHovered) {
    for (QWidget* child : widget.findChildren<QWidget*>()) {
        child->setAttribute(Qt::WA_UnderMouse, isHovered);
    }
}

inline void setAllPressed(const QWidget& widget, bool isPressed) {
    for (QAbstractButton* button : widget.findChildren<QAbstractButton*>()) {
        button->setDown(isPressed);
    }
}

/// Calls a function as the widget is, with the mouse over everything in it, and with all buttons
/// pressed.
template <typename Check> void inEachState(const QWidget& widget, Check check) {
    check("idle");
    setAllHovered(widget, true);
    check("hovered");
    setAllPressed(widget, true);
    check("pressed");
    setAllPressed(widget, false);
    setAllHovered(widget, false);
}

/// Checks all texts and glyphs in each of these states. Returns the texts.
inline std::vector<std::string> expectContrastInEachState(QWidget& widget, double textContrast) {
    std::vector<std::string> texts;
    inEachState(widget, [&](const char* state) {
        texts = textsOf(expectContrast(widget, textContrast, state));
    });
    return texts;
}

/// The contrast of the ring around a control with the keyboard focus, or 0 without a ring.
inline double ringContrast(const QWidget& control) {
    constexpr double ringWidth = 2;
    const QRect place(control.mapTo(control.window(), QPoint()), control.size());
    double result = 0;
    for (const Painted& painted : paintedBy(*control.window(), place)) {
        if (painted.kind == Painted::Kind::line && painted.lineWidth == ringWidth &&
            place.contains(painted.place)) {
            result = painted.contrast;
        }
    }
    return result;
}

/// Gives a control of an active window the keyboard focus, and checks its ring in each state.
inline void expectFocusRing(QWidget& control) {
    constexpr double required = 3;
    control.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&control, Qt::Key_Shift);
    // The window system may take the focus from a new window and give it back.
    ASSERT_TRUE(test::runUntil([&] { return control.hasFocus(); }));
    inEachState(*control.window(), [&](const char* state) {
        EXPECT_GE(ringContrast(control), required)
            << state << ' ' << control.metaObject()->className();
    });
}

} // namespace kestrel
