#pragma once

#include "AccessibleViews.h"
#include "JobList.h"
#include "JobRow.h"
#include "JobScrollArea.h"
#include "ProgressBar.h"
#include "Scenario.h"
#include "TextFont.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <algorithm>

namespace kestrel {

/// A job list in a window of its own, between two buttons, that follows its model.
class JobListFixture : public ::testing::Test {
  protected:
    /// As ContentView does before the first view.
    static void SetUpTestSuite() { installAccessibleViews(); }

    JobListFixture() {
        before_.setFocusPolicy(Qt::TabFocus);
        after_.setFocusPolicy(Qt::TabFocus);
        auto* column = new QVBoxLayout(&window_);
        column->setContentsMargins(0, 0, 0, 0);
        column->setSpacing(0);
        column->addWidget(&before_);
        column->addWidget(&list_, 1);
        column->addWidget(&after_);
        QObject::connect(scenario_.model.get(), &ConverterViewModel::willChange, &list_,
                         &JobList::refresh, Qt::QueuedConnection);
        window_.resize(649, 560);
        EXPECT_TRUE(showActive(window_));
        before_.setFocus();
    }

    JobScrollArea* area() const { return list_.findChild<JobScrollArea*>(); }

    QScrollBar* bar() const { return area()->verticalScrollBar(); }

    ProgressBar* overall() const { return find<ProgressBar>(list_, "overallProgress"); }

    /// The visible rows, from top to bottom.
    std::vector<JobRow*> rows() const {
        std::vector<JobRow*> rows;
        for (JobRow* row : list_.findChildren<JobRow*>()) {
            if (!row->visibleRegion().isEmpty()) {
                rows.push_back(row);
            }
        }
        std::sort(rows.begin(), rows.end(),
                  [](const JobRow* a, const JobRow* b) { return a->y() < b->y(); });
        return rows;
    }

    std::vector<std::string> texts(const char* name) const {
        std::vector<std::string> texts;
        for (const JobRow* row : rows()) {
            texts.push_back(utf8(find<QLabel>(*row, name)->text()));
        }
        return texts;
    }

    JobRow* rowOf(const std::string& name) const {
        for (JobRow* row : rows()) {
            if (row->job().source().lastPathComponent() == name) {
                return row;
            }
        }
        return nullptr;
    }

    QPushButton* removeButtonOf(const std::string& name) const {
        return find<QPushButton>(*rowOf(name), "removeButton");
    }

    /// The row that has the keyboard focus itself, or null.
    static JobRow* focusedRow() { return qobject_cast<JobRow*>(QApplication::focusWidget()); }

    static std::string focusedName() {
        const JobRow* row = focusedRow();
        return row != nullptr ? std::string(row->job().source().lastPathComponent()) : "";
    }

    /// Returns true iff the row is entirely inside the viewport.
    bool isFullyVisible(const JobRow* row) const {
        return row->y() >= 0 && row->y() + row->height() <= area()->viewport()->height();
    }

    /// Sends a key click to the focus widget.
    static void type(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        settle();
    }

    /// The height of a line of a failure message.
    int messageLine() const { return lineHeight(find<QLabel>(*rows().front(), "message")->font()); }

    Scenario scenario_;
    QWidget window_;
    QPushButton before_{QStringLiteral("Before"), &window_};
    JobList list_{scenario_.model, &window_};
    QPushButton after_{QStringLiteral("After"), &window_};
};

} // namespace kestrel
