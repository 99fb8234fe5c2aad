#include "FileDropTarget.h"

#include "DroppedItem.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QWidget>

#include <algorithm>
#include <utility>
#include <vector>

namespace kestrel {
namespace {

std::vector<DroppedItem> itemsOf(const QDropEvent& event) {
    const QByteArray list = event.mimeData()->data(QString::fromLatin1(uriListType));
    return droppedItems({list.constData(), static_cast<std::size_t>(list.size())});
}

void acceptAsCopy(QDropEvent& event) {
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace

FileDropTarget::FileDropTarget(QWidget* widget, std::shared_ptr<ConverterViewModel> model)
    : QObject(widget), model_(std::move(model)) {
    widget->setAcceptDrops(true);
    widget->installEventFilter(this);
}

bool FileDropTarget::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::DragEnter:
        enter(static_cast<QDragEnterEvent&>(*event));
        return true;
    case QEvent::DragMove:
        if (isEntered_) {
            acceptAsCopy(static_cast<QDropEvent&>(*event));
        } else {
            event->ignore();
        }
        return true;
    case QEvent::DragLeave:
        end();
        return true;
    case QEvent::Drop:
        drop(static_cast<QDropEvent&>(*event));
        return true;
    case QEvent::Hide:
        // A widget that is hidden during a drag may get no DragLeave.
        end();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void FileDropTarget::enter(QDragEnterEvent& event) {
    const std::vector<DroppedItem> items = itemsOf(event);
    if (std::none_of(items.begin(), items.end(),
                     [](const DroppedItem& item) { return item.loadFileURL().has_value(); })) {
        event.ignore();
        return;
    }
    acceptAsCopy(event);
    if (!isEntered_) {
        isEntered_ = true;
        model_->setIsDropTargeted(true);
    }
}

void FileDropTarget::end() {
    if (isEntered_) {
        isEntered_ = false;
        model_->setIsDropTargeted(false);
    }
}

void FileDropTarget::drop(QDropEvent& event) {
    const bool wasEntered = isEntered_;
    end();
    if (wasEntered && model_->handleDrop(itemsOf(event))) {
        acceptAsCopy(event);
    } else {
        event.ignore();
    }
}

} // namespace kestrel
