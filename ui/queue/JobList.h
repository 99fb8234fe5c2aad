#pragma once

#include "ConverterViewModel.h"

#include <QWidget>

#include <memory>

namespace kestrel {

class ProgressBar;
class JobScrollArea;

/// The queue with at least one job: the rows, and above them the progress of the whole while a
/// batch runs. Takes drops anywhere.
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
