#pragma once

#include "ConverterViewModel.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <memory>

class QWidget;

namespace kestrel {

class Announcement;

/// Announces the start and the outcome of a batch to screen readers, without taking the focus.
class BatchAnnouncer : public QObject {
    Q_OBJECT

  public:
    /// Owned by `view`, which shows the announcements.
    BatchAnnouncer(std::shared_ptr<ConverterViewModel> model, QWidget* view);

    /// Announces a batch that has started or ended since the last call.
    void refresh();

  private:
    QString outcome() const;

    std::shared_ptr<ConverterViewModel> model_;
    Announcement* start_;
    Announcement* outcome_;
    bool wasConverting_ = false;
    /// The queue's length when the batch started; later jobs are not part of it.
    std::size_t batchLength_ = 0;
};

} // namespace kestrel
