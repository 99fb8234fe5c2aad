#pragma once

#include "ThemeColor.h"

#include <QWidget>

namespace kestrel {

/// A small filled circle, beside words that say the same.
class StatusDot : public QWidget {
    Q_OBJECT

  public:
    explicit StatusDot(QWidget* parent = nullptr);

    void setThemeColor(ThemeColor ink);

    /// What the dot is drawn in, as things are.
    QColor color() const { return themeColor_.color(palette()); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    ThemeColor themeColor_ = ThemeColor::Name::orange;
};

} // namespace kestrel
