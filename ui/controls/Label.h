#pragma once

#include "TextFont.h"
#include "ThemeColor.h"

#include <QFont>
#include <QLabel>
#include <QSize>
#include <QString>

#include <optional>

namespace kestrel {

/// Plain text in a `TextFont` and a `ThemeColor`. Follows the application font and the palette.
/// Word-wraps; the size hint is the size without wrapping.
class Label : public QLabel {
    Q_OBJECT

  public:
    explicit Label(const QString& text = {}, const TextFont& font = {}, QWidget* parent = nullptr);

    void setThemeColor(ThemeColor color);

    /// The current text colour, by palette and enabled state.
    QColor color() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

    /// The font derived from the current application font.
    virtual QFont currentFont() const;

  private:
    /// The size of `text` without wrapping, in `font` at `dpi` dots per inch.
    struct Measurement {
        QString text;
        QFont font;
        int dpi = 0;
        QSize size;
        /// False iff the text has line breaks of its own or ends with a space.
        bool isPlainLine = false;
    };

    const Measurement& measurement() const;
    int heightOf(const QSize& text) const;
    /// False iff the text fits the width on one line as it is.
    bool isWrappedAt(int width) const;

    TextFont textFont_;
    /// A layout asks for the size many times before the text or the font changes.
    mutable std::optional<Measurement> measurement_;
    ThemeColor themeColor_ = ThemeColor::Name::primary;
};

} // namespace kestrel
