#include "SymbolBadge.h"

#include "ContinuousRectangle.h"
#include "ShapePainting.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPainter>
#include <QRect>

#include <algorithm>

namespace kestrel {

void drawSymbolBadge(QPainter& painter, const QRect& rect, double radius, const QBrush& fill,
                     Symbol symbol, const QFont& font, const QColor& color) {
    constexpr int symbolMargin = 6;
    fillShape(painter, continuousRectangle(rect, radius), fill);
    const int symbolSide = std::min(symbolSize(font), rect.width() - 2 * symbolMargin);
    drawSymbol(painter, rect, symbol, symbolSide, color);
}

} // namespace kestrel
