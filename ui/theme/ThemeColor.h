#pragma once

#include <QColor>

class QPalette;

namespace kestrel {

/// A named colour or a colour role, with an opacity; resolved to a QColor by the palette of the
/// widget that paints it.
class ThemeColor {
  public:
    enum class Name { primary, secondary, white, purple, blue, green, orange, red };

    // NOLINTNEXTLINE(google-explicit-constructor): a name is a colour
    ThemeColor(Name name) : name_(name) {}

    /// Returns the colour with its opacity multiplied.
    ThemeColor withOpacity(double opacity) const;

    /// Returns the value for the palette's colour scheme; its alpha is the opacity.
    QColor color(const QPalette& palette) const;

    friend bool operator==(const ThemeColor&, const ThemeColor&) = default;

  private:
    Name name_;
    double opacity_ = 1;
};

/// The opacity of texts and controls that are disabled.
inline constexpr double disabledOpacity = 0.4;

/// The colour of the lines between parts of the window, and of the borders of its controls.
QColor separatorColor(const QPalette& palette);

} // namespace kestrel
