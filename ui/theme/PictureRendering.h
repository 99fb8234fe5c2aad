#pragma once

#include <QImage>

class QPicture;

namespace kestrel {

/// What of a vector image is rendered: its pixels (Format_RGBA8888_Premultiplied), or its alpha
/// mask (Format_Alpha8). An image that has a mask is black on transparent, and white cuts out of
/// the black.
enum class Rendering { pixels, mask };

QImage::Format formatOf(Rendering rendering);

/// Renders a picture, `side` pixels wide and high.
QImage renderPicture(QPicture& picture, Rendering rendering, int side);

} // namespace kestrel
