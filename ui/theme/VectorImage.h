#pragma once

#include <QString>

class QPainter;

namespace kestrel {

/// Paints the SVG image of this name, such as "plus" for plus.svg, into a square of `size` by
/// `size` at the origin. Preserves the painter's state. Ends the program if there is no such image.
void paintVectorImage(QPainter& painter, const QString& name, double size);

} // namespace kestrel
