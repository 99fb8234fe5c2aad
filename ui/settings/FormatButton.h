#pragma once

#include "Button.h"
#include "OutputFormat.h"
#include "Symbol.h"

#include <functional>

namespace kestrel {

/// Stands for one output format. A press calls the action; only `setSelected` changes what is
/// shown.
class FormatButton : public Button {
    Q_OBJECT

  public:
    FormatButton(OutputFormat format, std::function<void()> action, QWidget* parent = nullptr);

    OutputFormat format() const noexcept { return format_; }

    /// Shows whether the format is the chosen one. Calls no action.
    void setSelected(bool isSelected);

    /// What stands for the format beside its name.
    Symbol symbol() const;

  protected:
    void nextCheckState() override;
    void drawBackground(QPainter& painter) override;
    void drawLabel(QPainter& painter) override;

  private:
    OutputFormat format_;
};

} // namespace kestrel
