#pragma once

#include "Symbol.h"
#include "TextFont.h"
#include "ThemeColor.h"

#include <QPushButton>

#include <optional>

namespace kestrel {

/// A custom-painted push button. Pressed by the mouse, Space or Enter; takes the keyboard focus by
/// Tab, not by a click.
class Button : public QPushButton {
    Q_OBJECT

  public:
    enum class Variant {
        /// The label only.
        plain,
        bordered,
        /// Filled, for the primary action.
        prominent,
    };
    enum class ControlSize { regular, large };

    explicit Button(Variant variant, const QString& text = {}, QWidget* parent = nullptr);

    /// Shows the symbol before the text, or alone if the text is empty.
    void setSymbol(Symbol symbol);
    void setTextFont(const TextFont& font);
    /// The colour of the label.
    void setThemeColor(ThemeColor color);
    void setControlSize(ControlSize size);
    /// Clicks in the next event-loop iteration, after the clicks posted before. Does nothing if the
    /// button is hidden or disabled then, or blocked by a panel or an alert.
    void postClick();

    /// Ends a press that has not led to a click yet, posted ones included.
    void discardPress();

    /// The space on either side of the label, in pixels.
    int padding() const;

    /// The minimum width of the label, without the padding, in pixels.
    void setMinimumLabelWidth(int width);
    /// Marks the action as destructive: the label becomes red.
    void markDestructive();

    /// Clears the hover state if the button has moved from under a resting mouse.
    void refreshHover();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

    /// Draws fill, border and focus ring.
    virtual void drawBackground(QPainter& painter);
    virtual void drawLabel(QPainter& painter);

  private:
    double cornerRadius() const;
    QColor fillColor() const;
    QColor labelColor() const;
    int labelWidth() const;

    Variant variant_;
    int discardCount_ = 0;
    ControlSize controlSize_ = ControlSize::regular;
    std::optional<Symbol> symbol_;
    TextFont textFont_;
    ThemeColor themeColor_ = ThemeColor::Name::primary;
    int minimumLabelWidth_ = 0;
};

} // namespace kestrel
