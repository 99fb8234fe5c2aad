#pragma once

#include <QFont>

namespace kestrel {

/// What part a text has in the window.
enum class TextStyle { body, title2, title3, subheadline, caption, caption2 };

/// A font by the part of its text in the window. Its size follows the user's own font.
struct TextFont {
    TextStyle style = TextStyle::body;
    QFont::Weight weight = QFont::Normal;
    bool isMonospaced = false;

    /// The font for the application font as it is now, never smaller than 9 pixels.
    QFont font() const;
};

/// The size of the font in pixels, at 96 to the inch unless the screen says otherwise. Unlike
/// QFontInfo in Qt 6.4 to 6.11, this does not load the font.
int pixelSize(const QFont& font);

/// The height in pixels that a line takes with all its ends, at every scale of the screen. The
/// font's own metrics are rounded (in Qt 6.4 to 6.11), and a screen with more pixels shows what the
/// rounding cuts off.
int lineHeight(const QFont& font);

/// A font of a fixed size in pixels, whatever the size of the user's own font is.
QFont systemFont(int pixelSize, QFont::Weight weight = QFont::Normal);

} // namespace kestrel
