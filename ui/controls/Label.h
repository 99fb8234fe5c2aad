#pragma once

#include "TextFont.h"
#include "ThemeColor.h"

#include <QLabel>

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
    int heightOf(const QSize& text) const;

    TextFont textFont_;
    ThemeColor themeColor_ = ThemeColor::Name::primary;
};

} // namespace kestrel
