#pragma once

#include <QBrush>
#include <QRect>

class QPainter;

namespace kestrel {

/// Fills a rectangle, band by band. The raster engine of Qt 6.4 to 6.11 fills a tall one on several
/// threads; waking them takes longer than they save.
void fillInBands(QPainter& painter, const QRect& rect, const QBrush& brush);

} // namespace kestrel
