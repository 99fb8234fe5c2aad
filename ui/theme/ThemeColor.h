#pragma once

#include <QColor>

class QPalette;

namespace kestrel {

/// The two kinds of palettes that the named colours are made for.
enum class ColorScheme { light, dark };

/// Which of the two a palette is, by its text and its ground.
ColorScheme colorScheme(const QPalette& palette);

/// What something is drawn in: a named colour or a role, which becomes a colour only with the
/// palette of the place where it is drawn.
class ThemeColor {
  public:
    enum class Name { primary, secondary, white, purple, blue, green, orange, red };

    // NOLINTNEXTLINE(google-explicit-constructor): a name is an ink
    ThemeColor(Name name) : name_(name) {}

    /// The ink at a fraction of its own opacity.
    ThemeColor withOpacity(double opacity) const;

    /// What the ink is on a ground of this palette.
    QColor color(const QPalette& palette) const;

    friend bool operator==(const ThemeColor&, const ThemeColor&) = default;

  private:
    Name name_;
    double opacity_ = 1;
};

/// The lines between parts of the window, and the edges of its controls.
QColor separatorColor(const QPalette& palette);

} // namespace kestrel
