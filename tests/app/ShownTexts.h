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

/// All texts of the widget and of everything below it: labels, buttons, entries of menus and lists,
/// titles, tool tips, and what assistive technology is told. Parts that are hidden count too.
std::vector<ShownText> shownTexts(QWidget& widget);

} // namespace kestrel
