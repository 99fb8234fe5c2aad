#pragma once

#include "OutputFormat.h"

#include <QWidget>

#include <functional>
#include <vector>

namespace kestrel {

class FormatButton;

/// The buttons for all output formats below their section label: a group of radio buttons to
/// assistive technology.
class FormatGroup : public QWidget {
    Q_OBJECT

  public:
    /// `choose` is called with the format of each button that is pressed.
    FormatGroup(const std::function<void(OutputFormat)>& choose, QWidget* parent = nullptr);

    /// Shows the format as the only selected one, without calling `choose`.
    void setSelected(OutputFormat format);

  private:
    std::vector<FormatButton*> buttons_;
};

} // namespace kestrel
