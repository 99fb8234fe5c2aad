#pragma once

#include <QString>

class QPainter;

namespace kestrel {

/// Paints the drawing of this name, such as "plus" for plus.svg, in a square of `size` by `size`
/// whose top left corner is the origin. The painter is left as it was.
void paintVectorImage(QPainter& painter, const QString& name, double size);

} // namespace kestrel
