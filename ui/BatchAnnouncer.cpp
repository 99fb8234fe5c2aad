#include "BatchAnnouncer.h"

#include <QAccessible>

#include <algorithm>
#include <utility>

namespace kestrel {

BatchAnnouncer::BatchAnnouncer(std::shared_ptr<ConverterViewModel> model, QWidget* parent)
    : QWidget(parent), model_(std::move(model)), wasConverting_(model_->isConverting()) {
    // What has no size is not showing, and what is not showing is not read.
    setFixedSize(1, 1);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void BatchAnnouncer::refresh() {
    if (model_->isConverting() == wasConverting_) {
        return;
    }
    wasConverting_ = model_->isConverting();
    announce(wasConverting_ ? tr("Converting") : outcome());
}

QString BatchAnnouncer::outcome() const {
    const std::vector<ConversionJob>& jobs = model_->jobs();
    const auto count = [&jobs](JobState::Case wanted) {
        return std::count_if(jobs.begin(), jobs.end(),
                             [wanted](const ConversionJob& job) { return job.state.is(wanted); });
    };
    const auto completed = count(JobState::Case::completed);
    const auto failed = count(JobState::Case::failed);
    const bool isOver = completed + failed == std::ssize(jobs);
    const QString text = isOver ? tr("Conversion finished: %1 complete, %2 failed")
                                : tr("Conversion stopped: %1 complete, %2 failed");
    return text.arg(QString::number(completed), QString::number(failed));
}

void BatchAnnouncer::announce(const QString& text) {
    setAccessibleName(text);
    // A notification is read when it appears.
    for (const QAccessible::Event type : {QAccessible::ObjectHide, QAccessible::ObjectShow}) {
        QAccessibleEvent event(this, type);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace kestrel
