#pragma once

class QColor;
class QPainter;
class QRectF;

namespace kestrel {

/// Draws a focus ring just inside a rectangle with rounded corners; `radius` in pixels. The painter
/// is left as it was.
void drawFocusRing(QPainter& painter, const QRectF& rect, double radius, const QColor& color);

} // namespace kestrel
