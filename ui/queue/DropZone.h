#pragma once

#include "ConverterViewModel.h"

#include <QWidget>

#include <memory>

class QBoxLayout;

namespace kestrel {

/// The queue panel's empty state: a drop target whose outline is highlighted during a drag, and
/// buttons that open a file dialog.
class DropZone : public QWidget {
    Q_OBJECT

  public:
    explicit DropZone(std::shared_ptr<ConverterViewModel> model, QWidget* parent = nullptr);

    /// Shows the model as it is now.
    void refresh();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QBoxLayout* makeButtons();

    std::shared_ptr<ConverterViewModel> model_;
};

} // namespace kestrel
