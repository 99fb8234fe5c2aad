#pragma once

#include "TextFont.h"
#include "ThemeColor.h"

#include <QLabel>

namespace kestrel {

/// Plain text in a font and an ink of the window's own. Follows the user's font and the
/// palette. Breaks its lines where it has to, and asks for the room that it takes without.
class Label : public QLabel {
    Q_OBJECT

  public:
    explicit Label(const QString& text = {}, const TextFont& font = {}, QWidget* parent = nullptr);

    void setThemeColor(ThemeColor ink);

    /// What the text is drawn in, as things are.
    QColor color() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

    /// The font for the user's font as it is now.
    virtual QFont currentFont() const;

  private:
    int heightOf(const QRect& text) const;

    TextFont textFont_;
    ThemeColor themeColor_ = ThemeColor::Name::primary;
};

} // namespace kestrel
