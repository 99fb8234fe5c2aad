#pragma once

#include "PictureRendering.h"

#include <QString>

namespace kestrel {

/// The SVG image of this name as it was rendered at build time; null if it was not rendered in this
/// size, or if there is no such image.
QImage prerenderedImage(const QString& name, Rendering rendering, int side);

/// The SVG image of this name, such as "plus" for plus.svg, `side` pixels wide and high: as it was
/// rendered at build time, or rendered now, if it was not rendered in this size. Ends the program
/// if there is no such image.
QImage vectorImage(const QString& name, Rendering rendering, int side);

} // namespace kestrel
