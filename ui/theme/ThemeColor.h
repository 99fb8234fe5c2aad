#pragma once

#include <QColor>

class QPalette;

namespace kestrel {

/// A named colour or a colour role, with an opacity; resolved to a QColor by the palette of the
/// widget that paints it. The values reach the contrast that WCAG 2.2 AA asks for on the default
/// palettes of Fusion, Breeze and Adwaita: 4.5 to 1 for text, 3 to 1 for symbols; 7 to 1 for text
/// if the palette is a high-contrast one.
class ThemeColor {
  public:
    enum class Name {
        primary,
        /// Of less important texts.
        secondary,
        /// Of less important symbols, which are dimmed further: stronger than `secondary`.
        secondarySymbol,
        white,
        purple,
        /// The purple below white text and symbols.
        purpleFill,
        blue,
        green,
        orange,
        red,
        /// The red below white symbols.
        redFill,
    };

    // NOLINTNEXTLINE(google-explicit-constructor): a name is a colour
    ThemeColor(Name name) : name_(name) {}

    /// Returns the colour with its opacity multiplied.
    ThemeColor withOpacity(double opacity) const;

    /// Returns the value for the palette's colour scheme and contrast; its alpha is the opacity.
    QColor color(const QPalette& palette) const;

    friend bool operator==(const ThemeColor&, const ThemeColor&) = default;

  private:
    Name name_;
    double opacity_ = 1;
};

/// The opacity of texts and controls that are disabled.
inline constexpr double disabledOpacity = 0.4;

/// Gives selected items the program's purple, and text that contrasts with it.
void setHighlight(QPalette& palette);

/// The colour of the lines between parts of the window, and of the borders of its controls.
QColor separatorColor(const QPalette& palette);

} // namespace kestrel
