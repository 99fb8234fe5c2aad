#include "Label.h"

#include "ApplicationFont.h"
#include "TextDrawing.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kestrel {

Label::Label(const QString& text, const TextFont& font, QWidget* parent)
    : QLabel(parent), textFont_(font) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setFont(textFont_.font());
    setText(text);
    connect(ApplicationFont::shared(), &ApplicationFont::changed, this,
            [this] { setFont(currentFont()); });
}

void Label::setThemeColor(ThemeColor color) {
    themeColor_ = color;
    update();
}

QColor Label::color() const {
    return (isEnabled() ? themeColor_ : themeColor_.withOpacity(disabledOpacity)).color(palette());
}

QFont Label::currentFont() const {
    return textFont_.font();
}

int Label::heightOf(const QSize& text) const {
    const auto lines = std::lround(text.height() / QFontMetricsF(font()).lineSpacing());
    return std::max(static_cast<int>(lines), 1) * lineHeight(font());
}

QSize Label::sizeHint() const {
    const QSize size = fontMetrics().size({}, text());
    return {size.width() + 1, heightOf(size)};
}

QSize Label::minimumSizeHint() const {
    if (!wordWrap()) {
        return sizeHint();
    }
    int width = 0;
    for (const QString& word : text().split(u' ')) {
        width = std::max(width, fontMetrics().horizontalAdvance(word) + 1);
    }
    return {width, lineHeight(font())};
}

int Label::heightForWidth(int width) const {
    if (!wordWrap()) {
        return sizeHint().height();
    }
    return static_cast<int>(wrappedLines(text(), font(), width).size()) * lineHeight(font());
}

void Label::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(color());
    drawAligned(painter, contentsRect(), layoutDirection(), alignment(), text(), wordWrap());
}

} // namespace kestrel
