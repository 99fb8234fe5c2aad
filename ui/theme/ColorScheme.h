#pragma once

class QColor;
class QPalette;

namespace kestrel {

/// The two schemes that each named colour has a value for.
enum class ColorScheme { light, dark };

/// Returns the scheme of a palette: dark iff its window text is lighter than its window.
ColorScheme colorScheme(const QPalette& palette);

/// Returns the contrast ratio of two opaque colours as WCAG 2.2 defines it, from 1 to 21.
double contrastRatio(const QColor& a, const QColor& b);

/// Returns whether a palette is a high-contrast one: iff the contrast of its window text on its
/// window is at least 19.5 to 1. Black on white and white on black have 21 to 1, yellow on black
/// 19.6; the default palettes of Fusion, Breeze and Adwaita have at most 18.3.
bool isHighContrast(const QPalette& palette);

} // namespace kestrel
