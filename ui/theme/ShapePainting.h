#pragma once

class QBrush;
class QPainter;
class QPainterPath;
class QPen;

namespace kestrel {

// Qt's raster engine (6.4 to 6.11) hands a fill with a translucent colour or a gradient to a thread
// pool if it has 96 spans or more, as the antialiased shape of a button has, and waits for it. That
// costs more than filling, and starts threads. These functions paint on the calling thread, except
// shapes larger than 300 by 300 device pixels that have a solid colour and no lines of one device
// pixel. They take the painter's transform and clip, but neither its pen, nor its brush, nor its
// hints.

/// Fills a path, antialiased.
void fillShape(QPainter& painter, const QPainterPath& path, const QBrush& brush);

/// Strokes a path, antialiased.
void strokeShape(QPainter& painter, const QPainterPath& path, const QPen& pen);

} // namespace kestrel
