#pragma once

class QPalette;

namespace kestrel {

/// The two schemes that each named colour has a value for.
enum class ColorScheme { light, dark };

/// Returns the scheme of a palette: dark iff its window text is lighter than its window.
ColorScheme colorScheme(const QPalette& palette);

} // namespace kestrel
