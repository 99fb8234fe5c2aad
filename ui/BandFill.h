#pragma once

#include <QBrush>
#include <QRect>

class QPainter;

namespace kestrel {

/// Fills a rectangle, band by band. The toolkit's painter hands the lines of a high one to threads
/// of its own, whose start and whose answers take many times longer than the filling.
void fillInBands(QPainter& painter, const QRect& rect, const QBrush& brush);

} // namespace kestrel
