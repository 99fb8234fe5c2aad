#include "MenuBar.h"

#include "ApplicationFont.h"
#include "ContinuousRectangle.h"
#include "MenuBarStyle.h"
#include "TextFont.h"

#include <QAction>
#include <QFontInfo>
#include <QFontMetrics>
#include <QMenu>
#include <QPainter>
#include <QShortcut>
#include <QStyleOption>

#include <algorithm>

namespace kestrel {
namespace {

constexpr int highlightInset = 3;
constexpr double highlightRadius = 6;
constexpr double hoverOpacity = 0.12;
constexpr double openOpacity = 0.2;

} // namespace

MenuBar::MenuBar(int height, QWidget* parent) : QMenuBar(parent), height_(height) {
    auto* barStyle = new MenuBarStyle(height);
    barStyle->setParent(this);
    setStyle(barStyle);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    refreshFont();
    connect(ApplicationFont::shared(), &ApplicationFont::changed, this, &MenuBar::refreshFont);
    // Qt 6.4 to 6.11 do not open a menu with F10.
    connect(new QShortcut(Qt::Key_F10, this), &QShortcut::activated, this, &MenuBar::openFirstMenu);
}

void MenuBar::refreshFont() {
    QFont font = TextFont{}.font();
    // Sets the font's resolve mask: the platform theme may have another font for menu bars.
    font.setFamilies(font.families());
    const int maximumTextHeight = height_ - 2 * highlightInset;
    while (QFontMetrics(font).height() > maximumTextHeight && QFontInfo(font).pixelSize() > 1) {
        font.setPixelSize(QFontInfo(font).pixelSize() - 1);
    }
    setFont(font);
    updateGeometry();
}

void MenuBar::openFirstMenu() {
    const QList<QAction*> all = actions();
    const auto first = std::find_if(all.begin(), all.end(), [](const QAction* action) {
        return action->menu() != nullptr && action->isVisible() && action->isEnabled();
    });
    if (first == all.end()) {
        return;
    }
    setActiveAction(*first);
    QMenu* menu = (*first)->menu();
    if (!menu->actions().isEmpty()) {
        menu->setActiveAction(menu->actions().front());
    }
}

void MenuBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    for (QAction* action : actions()) {
        drawItem(painter, *action);
    }
}

void MenuBar::drawItem(QPainter& painter, QAction& action) const {
    const QRect area = actionGeometry(&action);
    const bool isOpen = action.menu() != nullptr && action.menu()->isVisible();
    if (isOpen || activeAction() == &action) {
        QColor highlight = Qt::white;
        highlight.setAlphaF(static_cast<float>(isOpen ? openOpacity : hoverOpacity));
        painter.setPen(Qt::NoPen);
        painter.setBrush(highlight);
        painter.drawPath(continuousRectangle(
            QRectF(area).adjusted(0, highlightInset, 0, -highlightInset), highlightRadius));
    }
    QStyleOptionMenuItem option;
    initStyleOption(&option, &action);
    const bool isUnderlined = style()->styleHint(QStyle::SH_UnderlineShortcut, &option, this) != 0;
    painter.setFont(font());
    painter.setPen(Qt::white);
    painter.drawText(area,
                     static_cast<int>(Qt::AlignCenter) | Qt::TextSingleLine |
                         (isUnderlined ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                     action.text());
}

} // namespace kestrel
