#pragma once

#include <QProgressBar>

namespace kestrel {

/// A progress bar without text.
class ProgressBar : public QProgressBar {
    Q_OBJECT

  public:
    explicit ProgressBar(QWidget* parent = nullptr);

    /// Shows a fraction done; what lies outside 0 to 1 shows as the nearer end, NaN as 0.
    void setFraction(double fraction);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
};

} // namespace kestrel
