#pragma once

#include "OutputFormat.h"

#include <QPushButton>

#include <functional>

namespace kestrel {

/// Stands for one output format. A press calls the action; only `setSelected` changes what is
/// shown.
class FormatButton : public QPushButton {
    Q_OBJECT

  public:
    FormatButton(OutputFormat format, std::function<void()> action, QWidget* parent = nullptr);

    OutputFormat format() const noexcept { return format_; }

    void setSelected(bool isSelected);

  protected:
    void nextCheckState() override;

  private:
    OutputFormat format_;
};

} // namespace kestrel
