#include "ProgressBar.h"

#include "ControlStyle.h"

#include <algorithm>
#include <cmath>

namespace kestrel {
namespace {

constexpr int steps = 1000;
constexpr int thickness = 6;

} // namespace

ProgressBar::ProgressBar(QWidget* parent) : QProgressBar(parent) {
    setRange(0, steps);
    setValue(0);
    setTextVisible(false);
    setStyle(ControlStyle::shared());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ProgressBar::setFraction(double fraction) {
    const double shown = std::isnan(fraction) ? 0.0 : std::clamp(fraction, 0.0, 1.0);
    setValue(static_cast<int>(std::lround(shown * steps)));
}

QSize ProgressBar::sizeHint() const {
    return {160, thickness};
}

QSize ProgressBar::minimumSizeHint() const {
    return {40, thickness};
}

} // namespace kestrel
