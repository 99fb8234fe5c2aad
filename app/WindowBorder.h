#pragma once

#include <QWidget>

namespace kestrel {

/// The line around a window that has no other edge, over everything else in it. Lets the mouse
/// through.
class WindowBorder : public QWidget {
    Q_OBJECT

  public:
    explicit WindowBorder(QWidget* parent);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

} // namespace kestrel
