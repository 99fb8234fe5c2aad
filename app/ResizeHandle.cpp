#include "ResizeHandle.h"

#include <QMouseEvent>
#include <QRegion>

#include <algorithm>

namespace kestrel {
namespace {

constexpr int thickness = 5;
constexpr int cornerReach = 12;

Qt::CursorShape cursorFor(Qt::Edges edges) {
    if (edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge)) {
        return Qt::SizeFDiagCursor;
    }
    if (edges == (Qt::TopEdge | Qt::RightEdge) || edges == (Qt::BottomEdge | Qt::LeftEdge)) {
        return Qt::SizeBDiagCursor;
    }
    return edges.testAnyFlags(Qt::LeftEdge | Qt::RightEdge) ? Qt::SizeHorCursor : Qt::SizeVerCursor;
}

struct Span {
    int start;
    int length;
};

/// The handle's extent along one axis, on which `atStart` and `atEnd` are the window's edges.
Span span(bool atStart, bool atEnd, bool isCorner, int length) {
    const int extent = isCorner ? cornerReach : thickness;
    if (atStart) {
        return {0, extent};
    }
    if (atEnd) {
        return {length - extent, extent};
    }
    return {cornerReach, std::max(0, length - 2 * cornerReach)};
}

} // namespace

ResizeHandle::ResizeHandle(Qt::Edges edges, QWidget* parent) : QWidget(parent), edges_(edges) {
    setCursor(cursorFor(edges));
}

bool ResizeHandle::isCorner() const {
    return edges_.testAnyFlags(Qt::LeftEdge | Qt::RightEdge) &&
           edges_.testAnyFlags(Qt::TopEdge | Qt::BottomEdge);
}

void ResizeHandle::place(QSize window) {
    const Span horizontal = span(edges_.testFlag(Qt::LeftEdge), edges_.testFlag(Qt::RightEdge),
                                 isCorner(), window.width());
    const Span vertical = span(edges_.testFlag(Qt::TopEdge), edges_.testFlag(Qt::BottomEdge),
                               isCorner(), window.height());
    setGeometry(horizontal.start, vertical.start, horizontal.length, vertical.length);
    if (isCorner()) {
        // An L along both edges: clicks inside it are for the controls in the corner.
        const int inner = cornerReach - thickness;
        const QRect hole(edges_.testFlag(Qt::LeftEdge) ? thickness : 0,
                         edges_.testFlag(Qt::TopEdge) ? thickness : 0, inner, inner);
        setMask(QRegion(rect()) - hole);
    }
}

void ResizeHandle::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        Q_EMIT resizeRequested(edges_);
    }
}

} // namespace kestrel
