#include "JobList.h"

#include "FileDropTarget.h"
#include "JobScrollArea.h"
#include "ProgressBar.h"

#include <QVBoxLayout>

#include <utility>

namespace kestrel {

JobList::JobList(std::shared_ptr<ConverterViewModel> model, QWidget* parent)
    : QWidget(parent),
      model_(std::move(model)),
      overallProgress_(new ProgressBar(this)),
      rows_(new JobScrollArea(model_, this)) {
    new FileDropTarget(this, model_);
    overallProgress_->setObjectName(QStringLiteral("overallProgress"));
    overallProgress_->setAccessibleName(tr("Overall progress"));
    setFocusProxy(rows_);

    auto* barMargins = new QVBoxLayout;
    barMargins->setContentsMargins(26, 0, 26, 0);
    barMargins->addWidget(overallProgress_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(barMargins);
    column->addWidget(rows_, 1);
    refresh();
}

void JobList::refresh() {
    overallProgress_->setFraction(model_->overallProgress());
    overallProgress_->setVisible(model_->isConverting());
    rows_->refresh();
}

} // namespace kestrel
