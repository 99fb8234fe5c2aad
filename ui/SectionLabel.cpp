#include "SectionLabel.h"

namespace kestrel {

SectionLabel::SectionLabel(const QString& text, QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setText(text);
}

} // namespace kestrel
