#pragma once

#include "ThemeColor.h"

#include <QWidget>

namespace kestrel {

/// A small filled circle beside a text that says the same.
class StatusDot : public QWidget {
    Q_OBJECT

  public:
    explicit StatusDot(QWidget* parent = nullptr);

    void setThemeColor(ThemeColor color);

    /// The current colour, by palette.
    QColor color() const { return themeColor_.color(palette()); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    ThemeColor themeColor_ = ThemeColor::Name::orange;
};

} // namespace kestrel
