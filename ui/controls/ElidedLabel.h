#pragma once

#include "Label.h"
#include "TextFont.h"

#include <QStringList>

namespace kestrel {

/// A label that shortens its plain text with an ellipsis to what fits, instead of asking for room.
/// `text()` stays the whole text, and the tool tip shows it wherever something is left out.
class ElidedLabel : public Label {
    Q_OBJECT

  public:
    /// A label of one line, shortened at `elideMode`.
    ElidedLabel(Qt::TextElideMode elideMode, const TextFont& font, QWidget* parent = nullptr);

    /// A label that wraps its text into at most `maxLines` lines; the last one is shortened at its
    /// right end. As high as the lines that its width brings.
    ElidedLabel(int maxLines, const TextFont& font, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

    /// What of the text is shown in a width in pixels: at least one line, at most `maxLines`.
    static QStringList shownLines(const QString& text, const QFont& font, int width, int maxLines);

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QStringList shownLines() const;
    bool isShownWhole() const;

    Qt::TextElideMode elideMode_ = Qt::ElideRight;
    int maxLines_ = 1;
};

} // namespace kestrel
