#pragma once

#include "ConverterViewModel.h"

#include <QWidget>

#include <cstddef>
#include <memory>

namespace kestrel {

/// Tells assistive technology when a batch starts and how it ended, without taking the focus.
/// Nothing of it is seen.
class BatchAnnouncer : public QWidget {
    Q_OBJECT

  public:
    explicit BatchAnnouncer(std::shared_ptr<ConverterViewModel> model, QWidget* parent = nullptr);

    /// Announces what has changed since the last call.
    void refresh();

  private:
    QString outcome() const;
    void announce(const QString& text);

    std::shared_ptr<ConverterViewModel> model_;
    bool wasConverting_ = false;
    /// How long the queue was when the batch began, which goes no further.
    std::size_t batchLength_ = 0;
};

} // namespace kestrel
