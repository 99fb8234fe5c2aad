#include "RowSeparators.h"

#include "ThemeColor.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace kestrel {
namespace {

constexpr double separatorStrength = 0.5;

void updateLinesBeside(QWidget& viewport, const std::vector<QRect>& lines,
                       const std::vector<QRect>& others) {
    for (const QRect& line : lines) {
        if (std::find(others.begin(), others.end(), line) == others.end()) {
            viewport.update(line);
        }
    }
}

} // namespace

void RowSeparators::set(std::vector<QRect> lines) {
    updateLinesBeside(viewport_, lines_, lines);
    updateLinesBeside(viewport_, lines, lines_);
    lines_ = std::move(lines);
}

void RowSeparators::scroll(int dy) {
    for (QRect& line : lines_) {
        line.translate(0, dy);
    }
}

void RowSeparators::paint(QPainter& painter, const QRect& rect) const {
    QColor color = separatorColor(viewport_.palette());
    color.setAlphaF(static_cast<float>(color.alphaF() * separatorStrength));
    for (const QRect& line : lines_) {
        if (rect.intersects(line)) {
            painter.fillRect(line, color);
        }
    }
}

} // namespace kestrel
