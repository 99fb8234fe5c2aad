#pragma once

#include <QPainterPath>

namespace kestrel {

/// A rounded rectangle with continuous corner curvature. Corners become circular arcs if the
/// rectangle is too small for that.
QPainterPath continuousRectangle(const QRectF& rect, double radius);

} // namespace kestrel
