#pragma once

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QString>

class QPainter;
class QRectF;

namespace kestrel {

/// The monochrome SVG images in symbols/, tinted when drawn.
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

/// The base name of the symbol's file, such as "waveform.badge.plus".
QString symbolName(Symbol symbol);

/// The size of a symbol beside text of this font, in pixels.
int symbolSize(const QFont& font);

/// The symbol in one colour, `size` pixels square, rendered for a device pixel ratio.
QPixmap symbolPixmap(Symbol symbol, int size, const QColor& color, double devicePixelRatio);

/// Draws the symbol centred in a box, `size` pixels square.
void drawSymbol(QPainter& painter, const QRectF& box, Symbol symbol, int size, const QColor& color);

} // namespace kestrel
