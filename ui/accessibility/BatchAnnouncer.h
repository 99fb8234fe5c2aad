#pragma once

#include "ConverterViewModel.h"

#include <QWidget>

#include <cstddef>
#include <memory>

namespace kestrel {

/// Announces the start and the outcome of a batch to screen readers, without taking the focus.
/// Paints nothing.
class BatchAnnouncer : public QWidget {
    Q_OBJECT

  public:
    explicit BatchAnnouncer(std::shared_ptr<ConverterViewModel> model, QWidget* parent = nullptr);

    /// Announces a batch that has started or ended since the last call.
    void refresh();

  private:
    QString outcome() const;
    void announce(const QString& text);

    std::shared_ptr<ConverterViewModel> model_;
    bool wasConverting_ = false;
    /// The queue's length when the batch started; later jobs are not part of it.
    std::size_t batchLength_ = 0;
};

} // namespace kestrel
