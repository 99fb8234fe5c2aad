#include "SymbolView.h"

#include "ApplicationFont.h"

#include <QPainter>

namespace kestrel {

SymbolView::SymbolView(Symbol symbol, const TextFont& font, ThemeColor color, QWidget* parent)
    : QWidget(parent), symbol_(symbol), font_(font), themeColor_(color) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    connect(ApplicationFont::shared(), &ApplicationFont::changed, this,
            &SymbolView::updateGeometry);
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
    drawSymbol(painter, rect(), symbol_, symbolSize(font_.font()), themeColor_.color(palette()));
}

} // namespace kestrel
