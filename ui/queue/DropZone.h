#pragma once

#include "ConverterViewModel.h"

#include <QWidget>

#include <memory>

class QBoxLayout;

namespace kestrel {

/// What the queue panel shows while the queue is empty: a place to drop files, with an outline that
/// answers to a drag above it, and buttons for those who would rather pick them.
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
