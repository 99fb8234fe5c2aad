#pragma once

#include <QWidget>

namespace kestrel {

/// A separator line, one pixel thick.
class Divider : public QWidget {
    Q_OBJECT

  public:
    explicit Divider(Qt::Orientation orientation, QWidget* parent = nullptr);

    /// Default: 1.
    void setOpacity(double opacity);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    double opacity_ = 1;
};

} // namespace kestrel
