#include "FractionBar.h"

#include <algorithm>
#include <cmath>

namespace kestrel {

namespace {
constexpr int steps = 1000;
} // namespace

FractionBar::FractionBar(QWidget* parent) : QProgressBar(parent) {
    setRange(0, steps);
    setValue(0);
    setTextVisible(false);
}

void FractionBar::setFraction(double fraction) {
    const double shown = std::isnan(fraction) ? 0.0 : std::clamp(fraction, 0.0, 1.0);
    setValue(static_cast<int>(std::lround(shown * steps)));
}

} // namespace kestrel
