#include "ContinuousRectangle.h"

#include <algorithm>
#include <numbers>

namespace kestrel {
namespace {

/// The extent of a corner along its sides, in radii.
constexpr double reach = 1.53;

} // namespace

QPainterPath continuousRectangle(const QRectF& rect, double radius) {
    const double half = std::min(rect.width(), rect.height()) / 2;
    const double r = std::min(radius, half);
    const double end = std::min(r * reach, half);
    // One cubic Bézier curve per corner. Its midpoint is that of a circular arc,
    // r * (1 - sqrt(1/2)) from either side, which determines the control points.
    const double middle = r * (1 - 1 / std::numbers::sqrt2);
    const double control = (8 * middle - end) / 3;

    const double left = rect.left();
    const double top = rect.top();
    const double right = rect.right();
    const double bottom = rect.bottom();
    QPainterPath path;
    path.moveTo(left + end, top);
    path.lineTo(right - end, top);
    path.cubicTo(right - control, top, right, top + control, right, top + end);
    path.lineTo(right, bottom - end);
    path.cubicTo(right, bottom - control, right - control, bottom, right - end, bottom);
    path.lineTo(left + end, bottom);
    path.cubicTo(left + control, bottom, left, bottom - control, left, bottom - end);
    path.lineTo(left, top + end);
    path.cubicTo(left, top + control, left + control, top, left + end, top);
    path.closeSubpath();
    return path;
}

} // namespace kestrel
