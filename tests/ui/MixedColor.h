#pragma once

#include <QColor>

#include <cmath>

namespace kestrel {

/// The opaque colour of `above`, at an opacity of `share`, over `below`.
inline QColor mixed(const QColor& below, const QColor& above, double share) {
    const auto mix = [share](int a, int b) {
        return static_cast<int>(std::lround(a * (1 - share) + b * share));
    };
    return {mix(below.red(), above.red()), mix(below.green(), above.green()),
            mix(below.blue(), above.blue())};
}

} // namespace kestrel
