#pragma once

#include "Button.h"
#include "ElidedLabel.h"
#include "Label.h"
#include "PopUpButton.h"

#include <QAbstractButton>
#include <QFontMetricsF>
#include <QLabel>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace kestrel {

/// The widget's class, name and text, for failure messages.
inline std::string describe(const QWidget* widget) {
    const auto* label = qobject_cast<const QLabel*>(widget);
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    const QString text = label != nullptr    ? label->text()
                         : button != nullptr ? button->text()
                                             : QString();
    return std::string(widget->metaObject()->className()) + " " +
           widget->objectName().toStdString() + " \"" + text.toStdString() + "\"";
}

/// Returns true iff the label's text fits into its rectangle or is elided.
inline bool hasRoomForText(const Label& label) {
    if (qobject_cast<const ElidedLabel*>(&label) != nullptr) {
        return label.height() >= QFontMetricsF(label.font()).height() &&
               label.width() >= label.minimumSizeHint().width();
    }
    return label.width() >= label.minimumSizeHint().width() &&
           label.height() >= label.heightForWidth(label.width());
}

inline bool hasRoomForText(const Button& button) {
    const QSize needed = button.minimumSizeHint();
    const int text = button.fontMetrics().horizontalAdvance(button.text());
    return button.width() >= std::max(needed.width(), text) && button.height() >= needed.height();
}

inline bool hasRoomForText(const QWidget& control) {
    const QSize needed = control.minimumSizeHint();
    return control.width() >= needed.width() && control.height() >= needed.height();
}

template <typename Widget> void expectRoomForTextsOf(const QWidget& parent) {
    for (const Widget* widget : parent.findChildren<Widget*>()) {
        if (widget->isVisible() && !widget->visibleRegion().isEmpty()) {
            EXPECT_TRUE(hasRoomForText(*widget))
                << describe(widget) << " has " << widget->width() << "x" << widget->height();
        }
    }
}

/// Expects that no descendant's text is clipped.
inline void expectRoomForTexts(const QWidget& parent) {
    expectRoomForTextsOf<Label>(parent);
    expectRoomForTextsOf<Button>(parent);
    expectRoomForTextsOf<PopUpButton>(parent);
}

/// Expects that each descendant is inside its parent, and that no siblings overlap.
inline void expectNoOverlap(const QWidget* parent) {
    const auto isShown = [](const QWidget* widget) {
        return widget->isVisible() && !widget->isWindow() && widget->width() > 1 &&
               widget->height() > 1;
    };
    const QList<QWidget*> children = parent->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    for (const QWidget* a : children) {
        if (!isShown(a)) {
            continue;
        }
        EXPECT_TRUE(parent->rect().contains(a->geometry()) ||
                    parent->objectName() == QStringLiteral("qt_scrollarea_viewport") ||
                    a->inherits("kestrel::JobRow"))
            << describe(a) << " reaches out of " << describe(parent);
        for (const QWidget* b : children) {
            if (a != b && isShown(b)) {
                EXPECT_FALSE(a->geometry().intersects(b->geometry()))
                    << describe(a) << " lies over " << describe(b);
            }
        }
        expectNoOverlap(a);
    }
}

} // namespace kestrel
