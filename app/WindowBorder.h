#pragma once

#include <QWidget>

namespace kestrel {

/// The one-pixel border of the frameless window, on top of its other children. Transparent to mouse
/// events.
class WindowBorder : public QWidget {
    Q_OBJECT

  public:
    explicit WindowBorder(QWidget* parent);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

} // namespace kestrel
