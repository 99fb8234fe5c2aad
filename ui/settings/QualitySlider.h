#pragma once

#include <QSlider>

namespace kestrel {

/// The slider for the quality from 30 to 100 percent: continuous for the mouse, in steps of one
/// percent for the arrow keys.
class QualitySlider : public QSlider {
    Q_OBJECT

  public:
    // The ends of the range, in percent.
    static constexpr double lowest = 30;
    static constexpr double highest = 100;

    explicit QualitySlider(QWidget* parent = nullptr);

    /// In percent.
    double quality() const { return static_cast<double>(value()) / stepsPerPercent; }

    /// Shows the quality, clamped to the range; emits no signal.
    void showQuality(double quality);

    /// Sets the quality, clamped to the range; emits `qualityChanged` if that changes it.
    void chooseQuality(double quality);

  Q_SIGNALS:
    /// The user chose another quality.
    void qualityChanged(double quality);

  protected:
    void wheelEvent(QWheelEvent* event) override;

  private:
    /// QSlider's values are integers.
    static constexpr int stepsPerPercent = 1000;
};

} // namespace kestrel
