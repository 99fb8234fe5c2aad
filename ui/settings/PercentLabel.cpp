#include "PercentLabel.h"

#include <cmath>

#include <QFontMetrics>

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

QString PercentLabel::wholePercents(double percent) {
    //: A percentage, such as 82%.
    return tr("%1%").arg(QString::number(std::trunc(percent), 'f', 0));
}

void PercentLabel::setPercent(double percent) {
    setText(wholePercents(percent));
}

QFont PercentLabel::currentFont() const {
    QFont font = textFont.font();
    const QString longest = wholePercents(100);
    for (int size = pixelSize(font);
         size > 1 && QFontMetrics(font).horizontalAdvance(longest) > width(); --size) {
        font.setPixelSize(size);
    }
    return font;
}

} // namespace kestrel
