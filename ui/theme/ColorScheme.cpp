#include "ColorScheme.h"

#include <QColor>
#include <QPalette>

namespace kestrel {

ColorScheme colorScheme(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    return window.lightnessF() < text.lightnessF() ? ColorScheme::dark : ColorScheme::light;
}

} // namespace kestrel
