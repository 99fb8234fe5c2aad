#pragma once

#include "Label.h"
#include "TextFont.h"

#include <QStringList>

namespace kestrel {

/// A label that elides its plain text to the available width. `text()` returns the full text, and a
/// tool tip shows it while it is elided.
class ElidedLabel : public Label {
    Q_OBJECT

  public:
    /// A single-line label, elided by `elideMode`.
    ElidedLabel(Qt::TextElideMode elideMode, const TextFont& font, QWidget* parent = nullptr);

    /// A height-for-width label that wraps its text into at most `maxLines` lines and elides the
    /// last one (Qt::ElideRight).
    ElidedLabel(int maxLines, const TextFont& font, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override;
    int heightForWidth(int width) const override;

    /// Returns the lines shown at a width in pixels: at least one, at most `maxLines`.
    static QStringList shownLines(const QString& text, const QFont& font, int width, int maxLines);

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QStringList shownLines() const;
    bool isElided() const;

    Qt::TextElideMode elideMode_ = Qt::ElideRight;
    int maxLines_ = 1;
};

} // namespace kestrel
