#pragma once

#include <QSlider>

namespace kestrel {

/// The slider for the quality from 30 to 100 percent, without steps for the mouse and in steps of
/// one percent for the keys.
class QualitySlider : public QSlider {
    Q_OBJECT

  public:
    // The ends of the range, in percent.
    static constexpr double lowest = 30;
    static constexpr double highest = 100;

    explicit QualitySlider(QWidget* parent = nullptr);

    /// In percent.
    double quality() const { return static_cast<double>(value()) / stepsPerPercent; }

    /// Shows the quality, or the nearer end of the range, without a word to anybody.
    void showQuality(double quality);

    /// Moves to the quality, or to the nearer end of the range, as the user does.
    void chooseQuality(double quality);

  Q_SIGNALS:
    /// The user chose another quality.
    void qualityChanged(double quality);

  private:
    /// A slider counts in whole numbers.
    static constexpr int stepsPerPercent = 1000;
};

} // namespace kestrel
