#include "BatchAnnouncer.h"

#include "Announcement.h"
#include "ConversionJob.h"
#include "JobState.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace kestrel {

BatchAnnouncer::BatchAnnouncer(std::shared_ptr<ConverterViewModel> model, QWidget* view)
    : QObject(view),
      model_(std::move(model)),
      start_(new Announcement(view)),
      outcome_(new Announcement(view)),
      wasConverting_(model_->isConverting()),
      batchLength_(model_->jobs().size()) {}

void BatchAnnouncer::refresh() {
    if (model_->isConverting() == wasConverting_) {
        return;
    }
    wasConverting_ = model_->isConverting();
    if (!wasConverting_) {
        outcome_->announce(outcome());
        return;
    }
    batchLength_ = model_->jobs().size();
    //: A batch has begun.
    start_->announce(tr("Converting"));
}

QString BatchAnnouncer::outcome() const {
    const std::vector<ConversionJob>& jobs = model_->jobs();
    const auto count = [&jobs](JobState::Case wanted) {
        return std::count_if(jobs.begin(), jobs.end(),
                             [wanted](const ConversionJob& job) { return job.state.is(wanted); });
    };
    const auto completed = count(JobState::Case::completed);
    const auto failed = count(JobState::Case::failed);
    // Jobs queued during the batch come after its own and wait for the next one.
    const std::size_t length = std::min(batchLength_, jobs.size());
    const bool isOver = std::all_of(
        jobs.begin(), std::next(jobs.begin(), static_cast<std::ptrdiff_t>(length)),
        [](const ConversionJob& job) {
            return job.state.is(JobState::Case::completed) || job.state.is(JobState::Case::failed);
        });
    //: "2 complete" and "1 failed".
    const QString finished = tr("Conversion finished: %1, %2");
    //: "2 complete" and "1 failed". The user cancelled, and some files are left.
    const QString stopped = tr("Conversion stopped: %1, %2");
    //: How many files were converted.
    const QString completedText = tr("%n complete", nullptr, static_cast<int>(completed));
    //: How many files could not be converted.
    const QString failedText = tr("%n failed", nullptr, static_cast<int>(failed));
    return (isOver ? finished : stopped).arg(completedText, failedText);
}

} // namespace kestrel
