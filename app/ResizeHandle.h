#pragma once

#include <QWidget>

namespace kestrel {

/// An invisible handle that resizes the window by an edge or a corner; only the cursor shows it.
class ResizeHandle : public QWidget {
    Q_OBJECT

  public:
    /// One edge, or two adjacent ones for a corner.
    ResizeHandle(Qt::Edges edges, QWidget* parent);

    /// Sets the geometry for a window of this size.
    void place(QSize window);

  Q_SIGNALS:
    /// The left button was pressed on the handle.
    void resizeRequested(Qt::Edges edges);

  protected:
    void mousePressEvent(QMouseEvent* event) override;

  private:
    bool isCorner() const;

    Qt::Edges edges_;
};

} // namespace kestrel
