#pragma once

#include <QRect>
#include <QString>
#include <Qt>

class QPainter;

namespace kestrel {

/// Draws text into a rectangle, in the painter's font and pen. It is aligned by the direction of
/// the layout, but runs in its own: a name in one script stays legible in a window of another.
void drawAligned(QPainter& painter, const QRect& rect, Qt::LayoutDirection layout,
                 Qt::Alignment alignment, const QString& text, bool wraps = false);

} // namespace kestrel
