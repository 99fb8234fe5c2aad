#pragma once

#include <QRect>
#include <QString>
#include <QStringList>
#include <QTextOption>
#include <Qt>

#include <limits>

class QFont;
class QPainter;

namespace kestrel {

/// Draws text into a rectangle, in the painter's font and pen. It is aligned by the direction of
/// the layout, but runs in its own: a name in one script stays legible in a window of another.
void drawAligned(QPainter& painter, const QRect& rect, Qt::LayoutDirection layout,
                 Qt::Alignment alignment, const QString& text, bool wraps = false);

/// The text in lines of this width in pixels. Where there are more than `maxLines`, the last one is
/// the whole rest. At least one line; none ends in a blank.
QStringList wrappedLines(const QString& text, const QFont& font, int width,
                         QTextOption::WrapMode mode = QTextOption::WordWrap,
                         int maxLines = std::numeric_limits<int>::max());

} // namespace kestrel
