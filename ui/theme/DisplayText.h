#pragma once

#include <QString>

#include <string_view>

namespace kestrel {

/// A file name or path as one line of text. Bytes that are not UTF-8, control characters and line
/// ends show as U+FFFD, so that a name can neither break its row nor hide a part of itself.
QString displayText(std::string_view bytes);

/// A message as text of several lines, divided by '\n' whatever ended them before. Of a long
/// message only the first few thousand bytes are looked at; the text then ends in an ellipsis.
QString displayMessage(std::string_view bytes);

/// The text, fit to stand in the middle of other text: directional characters in it, overrides
/// included, do not reach beyond it, nor those around into it. Text without any is returned
/// unchanged where the program reads from left to right.
QString isolated(const QString& text);

/// The text as a tool tip that shows it to the letter, shortened where it is very long.
QString toolTipText(const QString& text);

} // namespace kestrel
