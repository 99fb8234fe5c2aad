#include "Button.h"
#include "JobListFixture.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QLayout>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <random>
#include <semaphore>

namespace kestrel {
namespace {

/// Performs seeded random actions of users and batches, and checks the list's invariants after each
/// one.
class JobListStressTest : public JobListFixture, public ::testing::WithParamInterface<unsigned> {
  public:
    JobListStressTest(const JobListStressTest&) = delete;
    JobListStressTest& operator=(const JobListStressTest&) = delete;

  protected:
    JobListStressTest() {
        for (int number = 0; number < maxNames; ++number) {
            scenario_.runner->setScript(nameOf(number),
                                        [this, number](const auto&, const auto& report) {
                                            report(0.3);
                                            permits_.acquire();
                                            finishConversion(number);
                                        });
        }
    }

    ~JobListStressTest() override {
        scenario_.model->cancel();
        permits_.release(std::ptrdiff_t{2} * maxNames);
        scenario_.finish();
    }

    /// Performs one action and checks the invariants.
    void step() {
        const std::vector<RowPosition> before = rowPositions();
        const std::optional<UUID> focused = focusedId();
        bool keepsPosition = false;
        act(keepsPosition);
        settle();
        if (keepsPosition) {
            expectSamePosition(before);
            if (focused && indexOf(*focused)) {
                EXPECT_EQ(focusedId(), focused);
            }
        }
        expectOrder();
        expectWidgets();
    }

    /// For failure messages.
    std::string describeState() const {
        return lastAction_ + ", jobs " + std::to_string(jobs().size()) + ", value " +
               std::to_string(bar()->value()) + " of " + std::to_string(bar()->maximum()) +
               ", height " + std::to_string(area()->viewport()->height());
    }

  private:
    static constexpr int maxNames = 1000;

    struct RowPosition {
        UUID id;
        int top;
        int bottom;
    };

    static std::string nameOf(int number) { return std::to_string(number) + ".opus"; }

    static void finishConversion(int number) {
        switch (number % 4) {
        case 0:
            throw FFmpegError::processFailed("short");
        case 1:
            throw FFmpegError::processFailed("first\nsecond\nthird");
        case 2:
            throw FFmpegError::processFailed(std::string(300, 'x') + " and on");
        default:
            return;
        }
    }

    int random(std::size_t below) {
        return static_cast<int>(random_() % std::max<std::size_t>(below, 1));
    }

    const std::vector<ConversionJob>& jobs() const { return scenario_.model->jobs(); }

    std::optional<std::size_t> indexOf(const UUID& id) const {
        const auto found = std::find_if(jobs().begin(), jobs().end(),
                                        [&id](const auto& job) { return job.id() == id; });
        return found != jobs().end()
                   ? std::optional(static_cast<std::size_t>(std::distance(jobs().begin(), found)))
                   : std::nullopt;
    }

    /// The visible rows according to the list, from top to bottom.
    std::vector<JobRow*> visibleRows() const {
        std::vector<JobRow*> rows = area()->rows();
        const int height = area()->viewport()->height();
        std::erase_if(rows, [height](const JobRow* row) {
            return row->y() + row->height() <= 0 || row->y() >= height;
        });
        return rows;
    }

    std::vector<RowPosition> rowPositions() const {
        std::vector<RowPosition> rowPositions;
        for (const JobRow* row : visibleRows()) {
            rowPositions.push_back({row->job().id(), row->y(), row->y() + row->height()});
        }
        return rowPositions;
    }

    /// The row that has the focus itself or in its button.
    static JobRow* rowWithFocus() {
        for (QWidget* widget = QApplication::focusWidget(); widget != nullptr;
             widget = widget->parentWidget()) {
            if (auto* row = qobject_cast<JobRow*>(widget)) {
                return row;
            }
        }
        return nullptr;
    }

    static std::optional<UUID> focusedId() {
        const JobRow* row = rowWithFocus();
        return row != nullptr ? std::optional(row->job().id()) : std::nullopt;
    }

    void act(bool& keepsPosition) {
        const int action = random(13);
        lastAction_ = "action " + std::to_string(action);
        keepsPosition = action < 6;
        switch (action) {
        case 0:
            return add();
        case 1:
            return removeSome();
        case 2:
            return removeVisible();
        case 3:
        case 4:
        case 5:
            return convert();
        case 6:
            return bar()->setValue(bar()->value() + random(400) - 200);
        case 7:
            return scrollWhileJobsChange();
        case 8:
            return window_.resize(330 + random(900), 150 + random(700));
        case 9:
            return click();
        case 10:
            return window_.setLayoutDirection(random(2) == 0 ? Qt::LeftToRight : Qt::RightToLeft);
        case 11:
            return after_.setFocus();
        default:
            return typeKey();
        }
    }

    void add() {
        std::vector<FileURL> urls;
        for (int count = 1 + random(8); count > 0 && next_ < maxNames; --count) {
            urls.emplace_back("/no-such-folder/" + nameOf(next_++));
        }
        scenario_.model->add(urls);
    }

    /// A running batch requires that the queue does not get shorter than it was at the start.
    bool canRemove() const {
        return !scenario_.model->isConverting() || jobs().size() > batchLength_;
    }

    void remove(const ConversionJob& job) const {
        if (canRemove() && !job.state.is(JobState::Case::converting)) {
            scenario_.model->remove(job);
        }
    }

    void removeSome() {
        for (int count = 1 + random(4); count > 0 && !jobs().empty(); --count) {
            remove(jobs()[static_cast<std::size_t>(random(jobs().size()))]);
        }
    }

    JobRow* someVisibleRow() {
        const std::vector<JobRow*> rows = visibleRows();
        return rows.empty() ? nullptr : rows[static_cast<std::size_t>(random(rows.size()))];
    }

    void removeVisible() {
        if (const JobRow* row = someVisibleRow()) {
            remove(row->job());
        }
    }

    void scrollWhileJobsChange() {
        bar()->setValue(random(static_cast<std::size_t>(bar()->maximum()) + 1));
        removeSome();
        add();
        bar()->setValue(random(static_cast<std::size_t>(bar()->maximum()) + 1));
    }

    void click() {
        JobRow* row = someVisibleRow();
        if (row == nullptr || !isFullyVisible(row)) {
            return;
        }
        if (random(2) == 0 && canRemove() && row->isRemovable()) {
            QTest::mouseClick(row->removeButton(), Qt::LeftButton);
        } else {
            QTest::mouseClick(row, Qt::LeftButton, {}, QPoint(100, 10));
        }
    }

    /// Starts a batch, or lets the one that runs finish some jobs.
    void convert() {
        if (!scenario_.model->isConverting()) {
            batchLength_ = jobs().size();
            scenario_.start();
            scenario_.model->setAlertMessage(std::nullopt);
            return;
        }
        for (int count = 1 + random(3); count > 0; --count) {
            const auto isConvertingOrOver = [this] {
                return converting() || !scenario_.model->isConverting();
            };
            ASSERT_TRUE(waitFor(isConvertingOrOver));
            const std::optional<UUID> id = converting();
            if (!id) {
                return;
            }
            permits_.release();
            ASSERT_TRUE(waitFor([&] { return converting() != id; }));
            ASSERT_TRUE(waitFor(isConvertingOrOver));
        }
    }

    template <typename Condition> static bool waitFor(Condition condition) {
        QElapsedTimer timer;
        timer.start();
        while (!condition() && timer.elapsed() < 5000) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
        }
        return condition();
    }

    std::optional<UUID> converting() const {
        for (const ConversionJob& job : jobs()) {
            if (job.state.is(JobState::Case::converting)) {
                return job.id();
            }
        }
        return std::nullopt;
    }

    void typeKey() {
        const JobRow* row = rowWithFocus();
        if (row == nullptr) {
            return type(Qt::Key_Tab);
        }
        constexpr std::array keys = {Qt::Key_Up,       Qt::Key_Down,  Qt::Key_Home,
                                     Qt::Key_End,      Qt::Key_Right, Qt::Key_PageUp,
                                     Qt::Key_PageDown, Qt::Key_Left,  Qt::Key_Delete};
        const Qt::Key key = keys.at(static_cast<std::size_t>(random(keys.size())));
        if (key == Qt::Key_Delete && !canRemove()) {
            return;
        }
        lastAction_ += ", key " + std::to_string(key);
        const auto from = static_cast<long>(indexOf(row->job().id()).value());
        type(key);
        if (!jobs().empty()) {
            expectFocus(key, from);
        }
    }

    void expectFocus(Qt::Key key, long from) const {
        const JobRow* row = rowWithFocus();
        ASSERT_NE(row, nullptr);
        if (key != Qt::Key_Delete && area()->viewport()->height() > row->height() + 12) {
            EXPECT_TRUE(isFullyVisible(row));
        }
        const auto to = static_cast<long>(indexOf(row->job().id()).value());
        const auto last = static_cast<long>(jobs().size()) - 1;
        const bool isPage = key == Qt::Key_PageUp || key == Qt::Key_PageDown;
        const bool isUp = key == Qt::Key_Up || key == Qt::Key_PageUp;
        const bool isDown = key == Qt::Key_Down || key == Qt::Key_PageDown;
        const long offset = isDown ? 1 : isUp ? -1 : 0;
        const long next = key == Qt::Key_Home  ? 0
                          : key == Qt::Key_End ? last
                                               : std::clamp(from + offset, 0L, last);
        EXPECT_TRUE(isPage ? (isUp ? to <= next : to >= next) : to == next) << from << ", " << to;
    }

    /// The visible rows are contiguous, in queue order, and cover the viewport.
    void expectOrder() const {
        const std::vector<JobRow*> rows = visibleRows();
        ASSERT_EQ(rows.empty(), jobs().empty());
        if (rows.empty()) {
            return;
        }
        const std::size_t first = indexOf(rows.front()->job().id()).value();
        ASSERT_LE(first + rows.size(), jobs().size());
        int y = first == 0 ? 6 - bar()->value() : rows.front()->y();
        EXPECT_TRUE(first == 0 || y <= 0);
        for (std::size_t place = 0; place < rows.size(); ++place) {
            const JobRow* row = rows[place];
            EXPECT_EQ(row->job().id(), jobs()[first + place].id());
            EXPECT_EQ(row->job().state, jobs()[first + place].state);
            EXPECT_EQ(row->y(), y);
            EXPECT_GE(row->height(), row->layout()->totalHeightForWidth(row->width()));
            y += row->height();
        }
        const int height = area()->viewport()->height();
        const bool hasLast = first + rows.size() == jobs().size();
        EXPECT_TRUE(hasLast || y >= height);
        EXPECT_TRUE(bar()->maximum() == 0 || y >= height - 6);
    }

    /// Each job has at most one row, and only the focused row is kept outside the viewport.
    void expectWidgets() const {
        const std::vector<JobRow*> live = area()->rows();
        for (std::size_t place = 0; place < live.size(); ++place) {
            const std::optional<std::size_t> index = indexOf(live[place]->job().id());
            ASSERT_TRUE(index);
            EXPECT_TRUE(place == 0 || indexOf(live[place - 1]->job().id()) < index);
            EXPECT_EQ(live[place]->accessibleDescription(),
                      QStringLiteral("%1 of %2").arg(*index + 1).arg(jobs().size()));
        }
        for (JobRow* row : list_.findChildren<JobRow*>()) {
            EXPECT_EQ(row->isHidden(), std::find(live.begin(), live.end(), row) == live.end());
        }
        EXPECT_LE(live.size(), visibleRows().size() + 1);
        const QWidget* focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        EXPECT_TRUE(focus != area() || jobs().empty());
        EXPECT_TRUE(rowWithFocus() == nullptr || !rowWithFocus()->isHidden());
    }

    /// The topmost remaining row keeps its bottom if its top was clipped; else its top is where
    /// that of the topmost unclipped row was.
    void expectSamePosition(const std::vector<RowPosition>& before) const {
        constexpr int line = 40;
        if (bar()->value() == 0 || bar()->value() + line > bar()->maximum()) {
            return;
        }
        std::optional<int> gap;
        for (const RowPosition& old : before) {
            if (!indexOf(old.id)) {
                gap = gap || old.top < 0 ? gap : old.top;
                continue;
            }
            for (const RowPosition& now : rowPositions()) {
                if (now.id != old.id) {
                    continue;
                }
                if (old.top >= 0) {
                    EXPECT_EQ(now.top, gap.value_or(old.top));
                } else if (now.top < 0) {
                    EXPECT_EQ(now.bottom, old.bottom);
                }
                return;
            }
            ADD_FAILURE() << "the topmost row was scrolled out of view";
            return;
        }
    }

    std::mt19937 random_{GetParam()};
    std::counting_semaphore<> permits_{0};
    std::string lastAction_;
    std::size_t batchLength_ = 0;
    int next_ = 0;
};

TEST_P(JobListStressTest, staysInOrderWhateverHappens) {
    for (int count = 0; count < 120; ++count) {
        step();
        if (HasFailure()) {
            FAIL() << "seed " << GetParam() << ", step " << count << ": " << describeState();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, JobListStressTest, ::testing::Range(1U, 4U));

} // namespace
} // namespace kestrel
