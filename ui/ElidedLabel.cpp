#include "ElidedLabel.h"

#include "DisplayText.h"
#include "TextDrawing.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QTextLayout>
#include <QTextOption>
#include <QToolTip>

#include <algorithm>
#include <utility>

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
    const QMargins margins = contentsMargins();
    const int width = maxLines_ == 1 ? fontMetrics().horizontalAdvance(text()) + 1 : 0;
    return {width + margins.left() + margins.right(),
            lineHeight(font()) + margins.top() + margins.bottom()};
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
    const QMargins margins = contentsMargins();
    const QStringList lines =
        shownLines(text(), font(), width - margins.left() - margins.right(), maxLines_);
    return static_cast<int>(lines.size()) * lineHeight(font()) + margins.top() + margins.bottom();
}

QStringList ElidedLabel::shownLines(const QString& text, const QFont& font, int width,
                                    int maxLines) {
    QString lines = text;
    lines.replace(u'\n', QChar(QChar::LineSeparator));
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout(lines, font);
    layout.setTextOption(option);

    QStringList shown;
    layout.beginLayout();
    while (shown.size() < maxLines) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(width);
        const bool isLast = shown.size() + 1 == maxLines;
        QString part =
            isLast ? lines.mid(line.textStart()) : lines.mid(line.textStart(), line.textLength());
        // A line keeps the separator or the blanks that end it. Aligned to the right, blanks would
        // show. In the last line, more lines may follow on a separator.
        while (!part.isEmpty() && part.back().isSpace()) {
            part.chop(1);
        }
        part.replace(QChar(QChar::LineSeparator), QChar(u' '));
        shown += isLast ? QFontMetrics(font).elidedText(part, Qt::ElideRight, width) : part;
    }
    layout.endLayout();
    return shown.isEmpty() ? QStringList{QString()} : shown;
}

QStringList ElidedLabel::shownLines() const {
    const int width = contentsRect().width();
    if (maxLines_ == 1) {
        return {fontMetrics().elidedText(text(), elideMode_, width)};
    }
    return shownLines(text(), font(), width, maxLines_);
}

bool ElidedLabel::isShownWhole() const {
    // Wrapping swallows the blanks and line ends that it wraps at.
    QString shown = shownLines().join(QString());
    QString whole = text();
    const auto isBlank = [](QChar character) { return character.isSpace(); };
    shown.removeIf(isBlank);
    whole.removeIf(isBlank);
    return shown == whole;
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return Label::event(event);
    }
    if (isShownWhole()) {
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
    // As in other labels, so that the letters of neighbours stand on one line.
    const Qt::Alignment side = (alignment() & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter;
    for (const QString& shown : shownLines()) {
        drawAligned(painter, line, layoutDirection(), side, shown);
        line.translate(0, line.height());
    }
}

} // namespace kestrel
