#pragma once

#include "ConverterViewModel.h"

#include <QObject>

#include <memory>

class QDragEnterEvent;
class QDropEvent;
class QWidget;

namespace kestrel {

/// Makes a widget take drops of files for the model: a drag with at least one file URL is accepted,
/// any other is not. The model's `isDropTargeted` is true while such a drag is over the widget.
class FileDropTarget : public QObject {
    Q_OBJECT

  public:
    /// Belongs to the widget.
    FileDropTarget(QWidget* widget, std::shared_ptr<ConverterViewModel> model);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void enter(QDragEnterEvent& event);
    void end();
    void drop(QDropEvent& event);

    std::shared_ptr<ConverterViewModel> model_;
    bool isEntered_ = false;
};

} // namespace kestrel
