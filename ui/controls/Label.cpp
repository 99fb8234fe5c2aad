#include "Label.h"

#include "ApplicationFont.h"
#include "TextDrawing.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace kestrel {
namespace {

bool isPlainLine(const QString& text) {
    const auto canBreak = [](QChar character) {
        const QChar::Category category = character.category();
        return category == QChar::Other_Control || category == QChar::Separator_Line ||
               category == QChar::Separator_Paragraph;
    };
    return !text.endsWith(u' ') && std::none_of(text.begin(), text.end(), canBreak);
}

} // namespace

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

const Label::Measurement& Label::measurement() const {
    if (!measurement_ || measurement_->text != text() || measurement_->font != font() ||
        measurement_->dpi != logicalDpiY()) {
        measurement_ = {text(), font(), logicalDpiY(), fontMetrics().size({}, text()),
                        isPlainLine(text())};
    }
    return *measurement_;
}

QSize Label::sizeHint() const {
    const QSize& size = measurement().size;
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

bool Label::isWrappedAt(int width) const {
    return wordWrap() && !(measurement().isPlainLine && measurement().size.width() < width);
}

int Label::heightForWidth(int width) const {
    if (!wordWrap()) {
        return sizeHint().height();
    }
    const auto lines = isWrappedAt(width) ? wrappedLines(text(), font(), width).size() : 1;
    return static_cast<int>(lines) * lineHeight(font());
}

void Label::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(color());
    const QRect rect = contentsRect();
    drawAligned(painter, rect, layoutDirection(), alignment(), text(), isWrappedAt(rect.width()));
}

} // namespace kestrel
