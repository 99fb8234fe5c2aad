#include "SectionLabel.h"

#include "Ink.h"
#include "TextFont.h"

namespace kestrel {

SectionLabel::SectionLabel(const QString& text, QWidget* parent) : Label(text, {}, parent) {
    setInk(Ink::Name::secondary);
    setFont(SectionLabel::currentFont());
}

QFont SectionLabel::currentFont() const {
    QFont font = systemFont(10, QFont::Bold);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 1.1);
    return font;
}

} // namespace kestrel
