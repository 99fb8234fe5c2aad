#pragma once

#include "Symbol.h"
#include "TextFont.h"
#include "ThemeColor.h"

#include <QWidget>

namespace kestrel {

/// A symbol in one colour, as large as text of a font.
class SymbolView : public QWidget {
    Q_OBJECT

  public:
    SymbolView(Symbol symbol, const TextFont& font, ThemeColor color, QWidget* parent = nullptr);

    /// Leaves this many pixels after the symbol, at its trailing edge.
    void setTrailingInset(int inset);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Symbol symbol_;
    TextFont font_;
    ThemeColor themeColor_;
    int trailingInset_ = 0;
};

} // namespace kestrel
