#include "SymbolView.h"

#include "UserFont.h"

#include <QPainter>

namespace kestrel {

SymbolView::SymbolView(Symbol symbol, const TextFont& font, Ink ink, QWidget* parent)
    : QWidget(parent), symbol_(symbol), font_(font), ink_(ink) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    connect(UserFont::shared(), &UserFont::changed, this, &SymbolView::updateGeometry);
}

QSize SymbolView::sizeHint() const {
    const int side = symbolSize(font_.font());
    return {side, side};
}

QSize SymbolView::minimumSizeHint() const {
    return sizeHint();
}

void SymbolView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    drawSymbol(painter, rect(), symbol_, symbolSize(font_.font()), ink_.color(palette()));
}

} // namespace kestrel
