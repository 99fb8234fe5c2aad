#pragma once

#include "Button.h"
#include "FileURL.h"

#include <optional>

namespace kestrel {

class ElidedLabel;
class Label;

/// Shows the output folder; the whole label is the button.
class DestinationButton : public Button {
    Q_OBJECT

  public:
    explicit DestinationButton(QWidget* parent = nullptr);

    void setDestination(const std::optional<FileURL>& destination);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  private:
    Label* caption_;
    ElidedLabel* path_;
};

} // namespace kestrel
