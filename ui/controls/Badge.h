#pragma once

#include <QWidget>

class QPainter;
class QPalette;
class QRect;

namespace kestrel {

/// A square of a fixed size, in pixels, that a function paints.
class Badge : public QWidget {
    Q_OBJECT

  public:
    using Painting = void (*)(QPainter& painter, const QRect& rect, const QPalette& palette);

    Badge(int side, Painting paint, QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Painting paint_;
};

} // namespace kestrel
