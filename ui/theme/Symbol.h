#pragma once

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QString>

class QPainter;
class QRectF;

namespace kestrel {

/// The drawings in symbols/, which take the colour of what is around them.
enum class Symbol {
    arrowDownDocFill,
    arrowRightCircle,
    boltFill,
    checkmarkCircleFill,
    folderBadgePlus,
    folderFill,
    musicNote,
    plus,
    waveform,
    waveformBadgeMagnifyingglass,
    waveformBadgePlus,
    xmarkCircleFill,
};

/// The symbol's own name, such as "waveform.badge.plus".
QString symbolName(Symbol symbol);

/// The side, in pixels, of the square that a symbol takes beside text of this font.
int symbolSize(const QFont& font);

/// The symbol in one colour, `size` pixels square, sharp at a device pixel ratio.
QPixmap symbolPixmap(Symbol symbol, int size, const QColor& color, double devicePixelRatio);

/// Draws the symbol in the middle of a box, `size` pixels square.
void drawSymbol(QPainter& painter, const QRectF& box, Symbol symbol, int size, const QColor& color);

} // namespace kestrel
