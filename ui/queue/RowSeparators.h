#pragma once

#include <QRect>

#include <vector>

class QPainter;
class QWidget;

namespace kestrel {

/// The lines between the rows of a list. Repaints only those that change.
class RowSeparators {
  public:
    /// Requires: `viewport` outlives this object.
    explicit RowSeparators(QWidget& viewport) : viewport_(viewport) {}

    /// Replaces the lines, in the coordinates of the viewport.
    void set(std::vector<QRect> lines);

    /// Moves the lines with the pixels of the viewport.
    void scroll(int dy);

    void paint(QPainter& painter, const QRect& rect) const;

  private:
    QWidget& viewport_;
    std::vector<QRect> lines_;
};

} // namespace kestrel
