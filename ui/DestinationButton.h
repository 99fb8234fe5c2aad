#pragma once

#include "FileURL.h"

#include <QPushButton>

#include <optional>

namespace kestrel {

class ElidedLabel;

/// Shows the output folder; the whole label is the button.
class DestinationButton : public QPushButton {
    Q_OBJECT

  public:
    explicit DestinationButton(QWidget* parent = nullptr);

    void setDestination(const std::optional<FileURL>& destination);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  private:
    ElidedLabel* path_;
};

} // namespace kestrel
