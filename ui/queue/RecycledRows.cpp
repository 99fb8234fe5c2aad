#include "RecycledRows.h"

#include "JobRow.h"

#include <QWidget>

#include <algorithm>
#include <cstdlib>

namespace kestrel {
JobRow* RecycledRows::row(std::size_t index) const {
    const auto found =
        std::find_if(placed_.begin(), placed_.end(),
                     [index](const RowWidget& placed) { return placed.index == index; });
    return found != placed_.end() ? found->row : nullptr;
}

std::optional<std::size_t> RecycledRows::indexOf(const JobRow& row) const {
    const auto found = std::find_if(placed_.begin(), placed_.end(),
                                    [&row](const RowWidget& placed) { return placed.row == &row; });
    return found != placed_.end() ? std::optional(found->index) : std::nullopt;
}

RecycledRows::Outcome RecycledRows::place(const std::vector<ConversionJob>& jobs,
                                          const std::vector<Place>& places, JobRow* focused) {
    const int dy = pendingScroll(jobs, places);
    RowsByJob unused;
    for (const RowWidget& placed : placed_) {
        unused.emplace(placed.row->job().id(), placed.row);
    }
    placed_.clear();
    // Where a scroll takes them to their places.
    std::vector<Place> before = places;
    for (Place& place : before) {
        place.geometry.translate(0, -dy);
    }
    const std::vector<Place> missing = placeKept(jobs, before, unused);
    if (dy != 0) {
        placeUncovered(jobs, missing);
        viewport_.scroll(0, dy);
    }
    JobRow* orphan = nullptr;
    for (const auto& [id, row] : unused) {
        if (row == focused) {
            orphan = row;
        } else {
            recycle(row);
        }
    }
    if (dy == 0) {
        for (const Place& at : missing) {
            place(takeSpare(), jobs[at.index], at, jobs.size());
        }
    }
    std::sort(placed_.begin(), placed_.end(),
              [](const RowWidget& a, const RowWidget& b) { return a.index < b.index; });
    return {dy, orphan};
}

int RecycledRows::pendingScroll(const std::vector<ConversionJob>& jobs,
                                const std::vector<Place>& places) const {
    if (!viewport_.isVisible()) {
        // QWidget::scroll would do nothing.
        return 0;
    }
    for (const auto& [index, geometry] : places) {
        const JobRow* kept = row(index);
        if (kept != nullptr && kept->job().id() == jobs[index].id() &&
            geometry.intersects(viewport_.rect())) {
            const int dy = geometry.top() - kept->y();
            // Beyond that, more is uncovered than copied, and more rows are widgets at a time.
            return std::abs(dy) <= viewport_.height() / 2 ? dy : 0;
        }
    }
    return 0;
}

std::vector<RecycledRows::Place> RecycledRows::placeKept(const std::vector<ConversionJob>& jobs,
                                                         const std::vector<Place>& places,
                                                         RowsByJob& unused) {
    std::vector<Place> missing;
    for (const Place& at : places) {
        const ConversionJob& job = jobs[at.index];
        const auto found = unused.find(job.id());
        if (found == unused.end()) {
            missing.push_back(at);
            continue;
        }
        place(found->second, job, at, jobs.size());
        unused.erase(found);
    }
    return missing;
}

void RecycledRows::placeUncovered(const std::vector<ConversionJob>& jobs,
                                  const std::vector<Place>& places) {
    for (const Place& at : places) {
        const ConversionJob& job = jobs[at.index];
        const bool isOutside = !at.geometry.intersects(viewport_.rect());
        JobRow* row = takeSpare();
        place(row, job, at, jobs.size());
        if (isOutside) {
            // A scroll uncovers it and so paints it.
            row->discardPostedUpdates();
        }
    }
}

void RecycledRows::place(JobRow* row, const ConversionJob& job, const Place& place,
                         std::size_t count) {
    row->setJob(job);
    row->setPosition(place.index, count);
    row->setGeometry(place.geometry);
    row->show();
    placed_.push_back({row, place.index});
}

void RecycledRows::recycle(JobRow* row) {
    row->hide();
    spare_.push_back(row);
}

JobRow* RecycledRows::takeSpare() {
    if (spare_.empty()) {
        return make_();
    }
    JobRow* row = spare_.back();
    spare_.pop_back();
    return row;
}

} // namespace kestrel
