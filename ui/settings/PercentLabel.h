#pragma once

#include "Label.h"

namespace kestrel {

/// A percentage in a fixed width. The font follows the user's as far as "100%" has room.
class PercentLabel : public Label {
    Q_OBJECT

  public:
    explicit PercentLabel(int width, QWidget* parent = nullptr);

    /// A percentage as it is shown: the whole percents, the rest being cut off.
    static QString wholePercents(double percent);

    void setPercent(double percent);

  protected:
    QFont currentFont() const override;
};

} // namespace kestrel
