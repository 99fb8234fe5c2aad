#include "QualitySlider.h"

#include "ControlStyle.h"

#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace kestrel {

QualitySlider::QualitySlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setStyle(ControlStyle::shared());
    setFocusPolicy(Qt::StrongFocus);
    setRange(static_cast<int>(lowest) * stepsPerPercent,
             static_cast<int>(highest) * stepsPerPercent);
    setSingleStep(stepsPerPercent);
    setPageStep(10 * stepsPerPercent);
    connect(this, &QSlider::valueChanged, this, [this] { Q_EMIT qualityChanged(quality()); });
}

void QualitySlider::showQuality(double quality) {
    const QSignalBlocker blocker(this);
    chooseQuality(quality);
}

void QualitySlider::chooseQuality(double quality) {
    const double shown = std::clamp(quality, lowest, highest);
    setValue(static_cast<int>(std::lround(shown * stepsPerPercent)));
}

void QualitySlider::wheelEvent(QWheelEvent* event) {
    // An accidental wheel event must not change a setting.
    event->ignore();
}

} // namespace kestrel
