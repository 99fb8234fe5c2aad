#pragma once

#include <QString>

#include <string_view>

namespace kestrel {

/// Returns a file name or path as one line of text. Bytes that are not UTF-8, control characters
/// and line separators become U+FFFD, so that a name can neither break its row nor hide a part of
/// itself.
QString displayText(std::string_view bytes);

/// Returns a message as text whose lines end with LF, whatever line separators it had. Of a
/// message of more than 4,096 bytes, the middle is replaced by an ellipsis: the reason is at the
/// end.
QString displayMessage(std::string_view bytes);

/// Returns the text for use within other text: bidi-isolated if the layout is right-to-left or the
/// text has right-to-left characters or directional formatting characters, else unchanged.
QString isolated(const QString& text);

/// Returns a tool tip that shows the text verbatim; of more than 4,200 characters, the middle is
/// replaced by an ellipsis.
QString toolTipText(const QString& text);

} // namespace kestrel
