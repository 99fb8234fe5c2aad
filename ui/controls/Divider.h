#pragma once

#include <QWidget>

namespace kestrel {

/// A line of one pixel between two parts of the window.
class Divider : public QWidget {
    Q_OBJECT

  public:
    explicit Divider(Qt::Orientation orientation, QWidget* parent = nullptr);

    /// 1 unless told.
    void setOpacity(double opacity);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    double opacity_ = 1;
};

} // namespace kestrel
