#pragma once

#include "Symbol.h"
#include "TextFont.h"
#include "ThemeColor.h"

#include <QWidget>

namespace kestrel {

/// A symbol as large as text of a font, in one ink.
class SymbolView : public QWidget {
    Q_OBJECT

  public:
    SymbolView(Symbol symbol, const TextFont& font, ThemeColor ink, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Symbol symbol_;
    TextFont font_;
    ThemeColor themeColor_;
};

} // namespace kestrel
