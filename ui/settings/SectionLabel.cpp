#include "SectionLabel.h"

#include "TextFont.h"
#include "ThemeColor.h"

namespace kestrel {

SectionLabel::SectionLabel(const QString& text, QWidget* parent) : Label(text, {}, parent) {
    setThemeColor(ThemeColor::Name::secondary);
    setFont(SectionLabel::currentFont());
}

QFont SectionLabel::currentFont() const {
    QFont font = systemFont(10, QFont::Bold);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 1.1);
    return font;
}

} // namespace kestrel
