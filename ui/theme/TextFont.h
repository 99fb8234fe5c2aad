#pragma once

#include <QFont>

namespace kestrel {

/// The role of a text in the window.
enum class TextStyle { body, title2, title3, subheadline, caption, caption2 };

/// A font by the role of its text. Its size is relative to the application font.
struct TextFont {
    TextStyle style = TextStyle::body;
    QFont::Weight weight = QFont::Normal;
    bool isMonospaced = false;

    /// Derived from the current application font; at least 9 pixels high.
    QFont font() const;
};

/// The size of the font in pixels, at the primary screen's logical DPI, or 96 without a screen.
/// Unlike QFontInfo in Qt 6.4 to 6.11, this does not load the font.
int pixelSize(const QFont& font);

/// The height in pixels of a line with its ascenders and descenders, at every device pixel ratio.
/// QFontMetrics rounds (in Qt 6.4 to 6.11), which clips text at higher ratios.
int lineHeight(const QFont& font);

/// The application font at a fixed size in pixels.
QFont systemFont(int pixelSize, QFont::Weight weight = QFont::Normal);

} // namespace kestrel
