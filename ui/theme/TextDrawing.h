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

/// Draws text with the painter's font and pen. `layout` decides the alignment, the text its own
/// base direction, so that a left-to-right name stays legible in a right-to-left window.
void drawAligned(QPainter& painter, const QRect& rect, Qt::LayoutDirection layout,
                 Qt::Alignment alignment, const QString& text, bool wraps = false);

/// Wraps the text at a width in pixels. Returns at least one and at most `maxLines` lines; the last
/// one takes the whole rest. No line ends in white space.
QStringList wrappedLines(const QString& text, const QFont& font, int width,
                         QTextOption::WrapMode mode = QTextOption::WordWrap,
                         int maxLines = std::numeric_limits<int>::max());

} // namespace kestrel
