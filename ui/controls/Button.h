#pragma once

#include "Symbol.h"
#include "TextFont.h"
#include "ThemeColor.h"

#include <QPushButton>

#include <optional>

namespace kestrel {

/// A button in one of the window's own looks. Pressed by the mouse, Space or Enter; takes the
/// keyboard focus by Tab, not by a click.
class Button : public QPushButton {
    Q_OBJECT

  public:
    enum class Variant {
        /// Nothing but the label.
        plain,
        bordered,
        /// Filled, for what people mostly want next.
        prominent,
    };
    enum class ControlSize { regular, large };

    explicit Button(Variant variant, const QString& text = {}, QWidget* parent = nullptr);

    /// Shows the symbol before the text, or alone if there is none.
    void setSymbol(Symbol symbol);
    void setTextFont(const TextFont& font);
    /// The ink of the label.
    void setThemeColor(ThemeColor ink);
    void setControlSize(ControlSize size);
    /// The room for the label, without the button's own edges, in pixels.
    void setMinimumLabelWidth(int width);
    /// Marks the button as one that breaks something off, by its ink.
    void markDestructive();

    /// Takes the button's highlight if it has moved from under a mouse that stayed where it is.
    void refreshHover();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

    /// Draws what lies behind the label: the fill, the edge, the focus ring.
    virtual void drawBackground(QPainter& painter);
    virtual void drawLabel(QPainter& painter);

  private:
    double cornerRadius() const;
    QColor fillColor() const;
    QColor labelColor() const;
    int labelWidth() const;
    int padding() const;

    Variant variant_;
    ControlSize controlSize_ = ControlSize::regular;
    std::optional<Symbol> symbol_;
    TextFont textFont_;
    ThemeColor themeColor_ = ThemeColor::Name::primary;
    int minimumLabelWidth_ = 0;
};

} // namespace kestrel
