#pragma once

#include "ConverterViewModel.h"
#include "JobRowHeights.h"

#include <QListView>

#include <memory>

namespace kestrel::bench {

/// A plain item view with the rows of a JobScrollArea: a list model of the jobs, and a delegate
/// that draws what a JobRow shows, by the same functions.
class PlainList : public QListView {
  public:
    /// Requires: `heights`, the heights of the rows, outlives this object.
    PlainList(const std::shared_ptr<ConverterViewModel>& model, const JobRowHeights& heights,
              QWidget* parent);
};

} // namespace kestrel::bench
