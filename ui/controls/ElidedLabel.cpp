#include "ElidedLabel.h"

#include "DisplayText.h"
#include "TextDrawing.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace kestrel {

ElidedLabel::ElidedLabel(Qt::TextElideMode elideMode, const TextFont& font, QWidget* parent)
    : Label({}, font, parent), elideMode_(elideMode) {
    setWordWrap(false);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
}

ElidedLabel::ElidedLabel(int maxLines, const TextFont& font, QWidget* parent)
    : Label({}, font, parent), maxLines_(maxLines) {
    setWordWrap(false);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
}

QSize ElidedLabel::sizeHint() const {
    const int width = maxLines_ == 1 ? fontMetrics().horizontalAdvance(text()) + 1 : 0;
    return {width, lineHeight(font())};
}

QSize ElidedLabel::minimumSizeHint() const {
    const QSize hint = sizeHint();
    const int ellipsisWidth = fontMetrics().horizontalAdvance(QChar(u'\u2026')) + 1;
    return {std::min(hint.width(), ellipsisWidth), hint.height()};
}

bool ElidedLabel::hasHeightForWidth() const {
    return maxLines_ > 1;
}

int ElidedLabel::heightForWidth(int width) const {
    if (maxLines_ == 1) {
        return -1;
    }
    const QStringList lines = shownLines(text(), font(), width, maxLines_);
    return static_cast<int>(lines.size()) * lineHeight(font());
}

QStringList ElidedLabel::shownLines(const QString& text, const QFont& font, int width,
                                    int maxLines) {
    QStringList shown =
        wrappedLines(text, font, width, QTextOption::WrapAtWordBoundaryOrAnywhere, maxLines);
    if (shown.size() == maxLines) {
        shown.back() = QFontMetrics(font).elidedText(shown.back(), Qt::ElideRight, width);
    }
    return shown;
}

QStringList ElidedLabel::shownLines() const {
    const int width = contentsRect().width();
    if (maxLines_ == 1) {
        return {fontMetrics().elidedText(text(), elideMode_, width)};
    }
    return shownLines(text(), font(), width, maxLines_);
}

bool ElidedLabel::isElided() const {
    // Wrapping drops the white space that it breaks lines at.
    QString shown = shownLines().join(QString());
    QString whole = text();
    const auto isBlank = [](QChar character) { return character.isSpace(); };
    shown.removeIf(isBlank);
    whole.removeIf(isBlank);
    return shown != whole;
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return Label::event(event);
    }
    if (!isElided()) {
        QToolTip::hideText();
        event->ignore();
        return true;
    }
    if (const auto* help = dynamic_cast<QHelpEvent*>(event)) {
        QToolTip::showText(help->globalPos(), toolTipText(text()), this);
    }
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(color());
    QRect line = contentsRect();
    if (maxLines_ > 1) {
        line.setHeight(lineHeight(font()));
    }
    // As in Label, so that adjacent labels share a baseline.
    const Qt::Alignment side = (alignment() & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter;
    for (const QString& shown : shownLines()) {
        drawAligned(painter, line, layoutDirection(), side, shown);
        line.translate(0, line.height());
    }
}

} // namespace kestrel
