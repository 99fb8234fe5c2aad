#pragma once

#include <QBrush>
#include <QRect>

class QPainter;

namespace kestrel {

/// Fills a rectangle band by band. Qt's raster engine (6.4 to 6.11) multithreads tall fills;
/// dispatching them costs more than filling.
void fillInBands(QPainter& painter, const QRect& rect, const QBrush& brush);

} // namespace kestrel
