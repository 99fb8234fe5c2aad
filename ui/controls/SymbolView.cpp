#include "SymbolView.h"

#include "ApplicationFont.h"

#include <QPainter>
#include <QStyle>

namespace kestrel {

SymbolView::SymbolView(Symbol symbol, const TextFont& font, ThemeColor color, QWidget* parent)
    : QWidget(parent), symbol_(symbol), font_(font), themeColor_(color) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    connect(ApplicationFont::shared(), &ApplicationFont::changed, this,
            &SymbolView::updateGeometry);
}

void SymbolView::setTrailingInset(int inset) {
    trailingInset_ = inset;
    updateGeometry();
    update();
}

QSize SymbolView::sizeHint() const {
    const int side = symbolSize(font_.font());
    return {side + trailingInset_, side};
}

QSize SymbolView::minimumSizeHint() const {
    return sizeHint();
}

void SymbolView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QRect box =
        QStyle::visualRect(layoutDirection(), rect(), rect().adjusted(0, 0, -trailingInset_, 0));
    drawSymbol(painter, box, symbol_, symbolSize(font_.font()), themeColor_.color(palette()));
}

} // namespace kestrel
