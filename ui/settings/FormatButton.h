#pragma once

#include "Button.h"
#include "OutputFormat.h"
#include "Symbol.h"

#include <functional>

namespace kestrel {

/// A checkable button for one output format. A press calls the action; selection follows
/// `setSelected` only.
class FormatButton : public Button {
    Q_OBJECT

  public:
    FormatButton(OutputFormat format, std::function<void()> action, QWidget* parent = nullptr);

    OutputFormat format() const noexcept { return format_; }

    /// Sets the checked state without calling the action.
    void setSelected(bool isSelected);

    /// The format's icon.
    Symbol symbol() const;

  protected:
    void nextCheckState() override;
    void drawBackground(QPainter& painter) override;
    void drawLabel(QPainter& painter) override;

  private:
    OutputFormat format_;
};

} // namespace kestrel
