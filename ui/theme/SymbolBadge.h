#pragma once

#include "Symbol.h"

class QBrush;
class QColor;
class QFont;
class QPainter;
class QRect;

namespace kestrel {

/// Draws a filled continuous rectangle with a symbol in its middle. The symbol is as large as
/// beside text of the font, but keeps 6 pixels from the edges.
void drawSymbolBadge(QPainter& painter, const QRect& rect, double radius, const QBrush& fill,
                     Symbol symbol, const QFont& font, const QColor& color);

} // namespace kestrel
