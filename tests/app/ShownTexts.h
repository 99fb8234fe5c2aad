#pragma once

#include <QString>

#include <vector>

class QWidget;

namespace kestrel {

/// A text for the user, and where it was found.
struct ShownText {
    QString where;
    QString text;
};

/// Returns all texts of the widget and its descendants, hidden ones included: labels, buttons,
/// entries of menus and lists, titles, tool tips, and accessible texts.
std::vector<ShownText> shownTexts(QWidget& widget);

} // namespace kestrel
