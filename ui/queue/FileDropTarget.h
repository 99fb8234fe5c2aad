#pragma once

#include "ConverterViewModel.h"

#include <QObject>

#include <memory>

class QDragEnterEvent;
class QDropEvent;
class QWidget;

namespace kestrel {

/// Event filter that makes a widget a drop target for files: accepts a drag iff it has at least one
/// URL of a local file. The model's `isDropTargeted` is true while such a drag is over the widget.
class FileDropTarget : public QObject {
    Q_OBJECT

  public:
    /// Owned by the widget.
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
