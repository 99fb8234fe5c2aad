#pragma once

#include <QProgressBar>

namespace kestrel {

/// A progress bar without text.
class ProgressBar : public QProgressBar {
    Q_OBJECT

  public:
    explicit ProgressBar(QWidget* parent = nullptr);

    /// Shows a fraction, clamped to 0 to 1; NaN shows as 0.
    void setFraction(double fraction);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
};

} // namespace kestrel
