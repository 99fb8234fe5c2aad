#include "PercentLabel.h"

#include <QFontInfo>

#include <cmath>

namespace kestrel {
namespace {

constexpr TextFont textFont{TextStyle::caption, QFont::DemiBold, true};

} // namespace

PercentLabel::PercentLabel(int width, QWidget* parent) : Label({}, textFont, parent) {
    setFixedWidth(width);
    setAlignment(Qt::AlignCenter);
    setWordWrap(false);
    setFont(PercentLabel::currentFont());
}

void PercentLabel::setPercent(double percent) {
    setText(tr("%1%").arg(QString::number(std::trunc(percent), 'f', 0)));
}

QFont PercentLabel::currentFont() const {
    QFont font = textFont.font();
    const QString longest = tr("%1%").arg(QString::number(100));
    for (int size = QFontInfo(font).pixelSize();
         size > 1 && QFontMetrics(font).horizontalAdvance(longest) > width(); --size) {
        font.setPixelSize(size);
    }
    return font;
}

} // namespace kestrel
