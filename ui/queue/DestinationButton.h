#pragma once

#include "Button.h"
#include "FileURL.h"

#include <optional>

namespace kestrel {

class ElidedLabel;

/// Shows the output folder; the whole label is the button.
class DestinationButton : public Button {
    Q_OBJECT

  public:
    explicit DestinationButton(QWidget* parent = nullptr);

    /// Shows the folder, or a prompt to choose one if nullopt.
    void setDestination(const std::optional<FileURL>& destination);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  private:
    ElidedLabel* path_ = nullptr;
};

} // namespace kestrel
