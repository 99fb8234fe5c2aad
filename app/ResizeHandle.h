#pragma once

#include <QWidget>

namespace kestrel {

/// A part of the window's rim that resizes the window: nothing to see but the pointer. Lies over
/// one side, or over the corner where two sides meet.
class ResizeHandle : public QWidget {
    Q_OBJECT

  public:
    /// One or two adjacent sides.
    ResizeHandle(Qt::Edges edges, QWidget* parent);

    Qt::Edges edges() const noexcept { return edges_; }

    /// Takes its place in a window of this size.
    void place(QSize window);

  Q_SIGNALS:
    /// The user has taken hold of it.
    void resizeRequested(Qt::Edges edges);

  protected:
    void mousePressEvent(QMouseEvent* event) override;

  private:
    bool isCorner() const;

    Qt::Edges edges_;
};

} // namespace kestrel
