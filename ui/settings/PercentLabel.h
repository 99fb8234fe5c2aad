#pragma once

#include "Label.h"

namespace kestrel {

/// A percentage in a fixed width. Follows the application font, but no further than "100%" fits.
class PercentLabel : public Label {
    Q_OBJECT

  public:
    explicit PercentLabel(int width, QWidget* parent = nullptr);

    /// Formats a percentage, truncated to an integer.
    static QString wholePercents(double percent);

    void setPercent(double percent);

  protected:
    QFont currentFont() const override;
};

} // namespace kestrel
