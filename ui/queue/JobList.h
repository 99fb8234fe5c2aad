#pragma once

#include "ConverterViewModel.h"

#include <QWidget>

#include <memory>

namespace kestrel {

class ProgressBar;
class JobScrollArea;

/// The non-empty queue: the rows, below the overall progress bar while a batch runs. One drop
/// target as a whole.
class JobList : public QWidget {
    Q_OBJECT

  public:
    explicit JobList(std::shared_ptr<ConverterViewModel> model, QWidget* parent = nullptr);

    /// Shows the model as it is now.
    void refresh();

  private:
    std::shared_ptr<ConverterViewModel> model_;
    ProgressBar* overallProgress_;
    JobScrollArea* rows_;
};

} // namespace kestrel
