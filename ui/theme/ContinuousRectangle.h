#pragma once

#include <QPainterPath>

namespace kestrel {

/// A rectangle with rounded corners whose curvature sets in gradually. Where there is no room for
/// that, the corners become circular arcs.
QPainterPath continuousRectangle(const QRectF& rect, double radius);

} // namespace kestrel
