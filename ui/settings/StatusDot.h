#pragma once

#include "Ink.h"

#include <QWidget>

namespace kestrel {

/// A small filled circle, beside words that say the same.
class StatusDot : public QWidget {
    Q_OBJECT

  public:
    explicit StatusDot(QWidget* parent = nullptr);

    void setInk(Ink ink);

    /// What the dot is drawn in, as things are.
    QColor color() const { return ink_.color(palette()); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Ink ink_ = Ink::Name::orange;
};

} // namespace kestrel
