#include "AppBadge.h"
#include "Button.h"
#include "ContentView.h"
#include "DropZone.h"
#include "FormatButton.h"
#include "JobRow.h"
#include "JobScrollArea.h"
#include "PercentLabel.h"
#include "PopUpButton.h"
#include "QualitySlider.h"
#include "QueueView.h"
#include "Scenario.h"
#include "SectionLabel.h"
#include "SettingsSidebar.h"
#include "StatusDot.h"
#include "SymbolView.h"
#include "Timeout.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

namespace kestrel {
namespace {

struct Measure {
    const char* what;
    int actual;
    int expected;
};

/// The columns at the trailing end of the widget in which nothing opaque is drawn.
int blankAtTheEnd(const QWidget& widget) {
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const_cast<QWidget&>(widget).render(&image, {}, {}, QWidget::DrawChildren); // NOLINT: draws
    const bool isMirrored = widget.layoutDirection() == Qt::RightToLeft;
    int blank = 0;
    for (; blank < image.width(); ++blank) {
        const int x = isMirrored ? blank : image.width() - 1 - blank;
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixelColor(x, y).alpha() > 64) {
                return blank;
            }
        }
    }
    return blank;
}

/// Checks positions and sizes of widgets, in pixels, in a window without a title bar.
class GeometryTest : public ::testing::Test {
  protected:
    GeometryTest() : view_(scenario_.model, [] { return FileURL("/usr/bin/ffmpeg"); }) {
        view_.resize(960, 640);
        view_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_, test::timeout));
        settle();
    }

    QRect box(const QWidget* widget) const {
        return {widget->mapTo(&view_, QPoint()), widget->size()};
    }

    template <typename Widget> QRect box(int index = 0) const {
        return box(view_.findChildren<Widget*>().at(index));
    }

    QRect box(const char* name) const { return box(find<QWidget>(view_, name)); }

    QRect button(const char* text) const { return box(findButton<Button>(view_, text)); }

    static int end(const QRect& rect) { return rect.x() + rect.width(); }

    static int bottom(const QRect& rect) { return rect.y() + rect.height(); }

    /// The gap between a box and the next one to its right, or below it.
    static int across(const QRect& a, const QRect& b) { return b.x() - end(a); }

    static int down(const QRect& a, const QRect& b) { return b.y() - bottom(a); }

    /// Shows one failed, one converting and two waiting rows.
    std::vector<JobRow*> showRows() {
        scenario_.holdBack("b.opus", 0.5);
        scenario_.add({"a.opus", "b.opus", "c.opus", "d.opus"});
        scenario_.failWith("a.opus", "one line");
        scenario_.start();
        EXPECT_TRUE(scenario_.waitForProgress(1));
        settle();
        return view_.findChild<JobScrollArea*>()->rows();
    }

    /// The box of a row's child widget, by object name.
    QRect part(const JobRow* row, const char* name) const { return box(find<QWidget>(*row, name)); }

    static void expectAll(const std::vector<Measure>& measures) {
        for (const Measure& measure : measures) {
            EXPECT_EQ(measure.actual, measure.expected) << measure.what;
        }
    }

    Scenario scenario_;
    ContentView view_;
};

TEST_F(GeometryTest, laysOutTheSidebarDownToTheFormats) {
    const QRect sidebar = box<SettingsSidebar>();
    const QRect badge = box<AppBadge>();
    const QRect title = box("appTitle");
    const QRect subtitle = box("appSubtitle");
    const QRect format = box<SectionLabel>(0);
    const QRect mp3 = box<FormatButton>(0);
    const QRect aiff = box<FormatButton>(1);
    const QRect wav = box<FormatButton>(2);
    expectAll({
        // clang-format off
        {"sidebar: x",                          sidebar.x(),                0},
        {"sidebar: y",                          sidebar.y(),                0},
        {"sidebar: width",                      sidebar.width(),            310},
        {"sidebar: height",                     sidebar.height(),           640},
        {"badge: padding at the left",          badge.x(),                  24},
        {"badge: padding at the top",           badge.y(),                  32},
        {"badge: width",                        badge.width(),              44},
        {"badge: height",                       badge.height(),             44},
        {"badge to title",                      across(badge, title),       12},
        {"title to subtitle",                   down(title, subtitle),      1},
        {"header to format section",            down(badge, format),        22},
        {"OUTPUT FORMAT to MP3",                down(format, mp3),          10},
        {"MP3: x",                              mp3.x(),                    24},
        {"MP3: width",                          mp3.width(),                262},
        {"MP3: height",                         mp3.height(),               36},
        {"AIFF: height",                        aiff.height(),              36},
        {"WAV: height",                         wav.height(),               36},
        {"MP3 to AIFF",                         down(mp3, aiff),            10},
        {"AIFF to WAV",                         down(aiff, wav),            10},
        // clang-format on
    });
}

TEST_F(GeometryTest, laysOutTheSidebarFromTheFormatsOn) {
    const QRect wav = box<FormatButton>(2);
    const QRect quality = box<SectionLabel>(1);
    const QRect slider = box<QualitySlider>();
    const QRect percent = box<PercentLabel>();
    const QRect note = box("qualityNote");
    const QRect pcm = box<SectionLabel>(2);
    const QRect picker = box<PopUpButton>();
    const QRect dot = box<StatusDot>();
    const QRect status = box("ffmpegStatus");
    expectAll({
        // clang-format off
        {"format section to quality section",   down(wav, quality),         22},
        {"slider: x",                           slider.x(),                 24},
        {"QUALITY to slider",                   down(quality, slider),      10},
        {"slider to value",                     across(slider, percent),    8},
        {"value: width",                        percent.width(),            38},
        {"value: right edge",                   end(percent),               286},
        {"slider to note",                      down(slider, note),         10},
        {"quality section to PCM section",      down(note, pcm),            22},
        {"PCM OPTIONS to picker",               down(pcm, picker),          12},
        {"picker: right edge",                  end(picker),                286},
        {"dot: x",                              dot.x(),                    24},
        {"dot: width",                          dot.width(),                7},
        {"dot: height",                         dot.height(),               7},
        {"dot: middle",                         dot.center().y(),           status.center().y()},
        {"dot to status",                       across(dot, status),        7},
        {"status: padding at the bottom",       640 - bottom(status),       22},
        // clang-format on
    });
}

TEST_F(GeometryTest, laysOutTheQueuePanel) {
    scenario_.chooseDestination("/no-such-folder/Out");
    const QRect sidebarDivider = box("sidebarDivider");
    const QRect queue = box<QueueView>();
    const QRect title = box("queueTitle");
    const QRect summary = box("summary");
    const QRect folder = button("Folder");
    const QRect add = button("Add Audio");
    const QRect zone = box<DropZone>();
    const QRect divider = box("footerDivider");
    const QRect destination = box("destinationButton");
    const QRect symbol = box(find<QWidget>(view_, "destinationButton")->findChild<SymbolView*>());
    const QRect caption = box("destinationCaption");
    const QRect path = box("destinationPath");
    const QRect reveal = box("revealButton");
    const QRect start = box("startButton");
    expectAll({
        // clang-format off
        {"divider: x",                          sidebarDivider.x(),         310},
        {"divider: width",                      sidebarDivider.width(),     1},
        {"divider: height",                     sidebarDivider.height(),    640},
        {"queue: x",                            queue.x(),                  311},
        {"queue: width",                        queue.width(),              649},
        {"title: padding at the left",          title.x() - 311,            26},
        {"title: padding at the top",           title.y(),                  27},
        {"title to summary",                    down(title, summary),       3},
        {"Folder to Add Audio",                 across(folder, add),        8},
        {"header: middle of Folder",            folder.center().y(),        (27 + bottom(summary) - 1) / 2},
        {"header: middle of Add Audio",         add.center().y(),           folder.center().y()},
        {"footer: middle of the destination",   destination.center().y(),   start.center().y()},
        {"footer: middle of the reveal button", reveal.center().y(),        start.center().y()},
        {"destination: middle of the symbol",   symbol.center().y(),        destination.center().y()},
        {"Add Audio: padding at the right",     960 - end(add),             26},
        {"header: padding at the bottom",       down(summary, zone),        20},
        {"drop zone: x",                        zone.x(),                   311},
        {"drop zone: width",                    zone.width(),               649},
        {"drop zone to footer",                 down(zone, divider),        0},
        {"footer divider: left",                divider.x() - 311,          26},
        {"footer divider: right",               960 - end(divider),         26},
        {"footer divider: height",              divider.height(),           1},
        {"footer divider to start button",      down(divider, start),       14},
        {"start button: padding at the bottom", 640 - bottom(start),        22},
        {"start button: padding at the right",  960 - end(start),           26},
        {"start button: height",                start.height(),             36},
        {"start button: room for its label",    start.width() - 2 * 16,     138},
        {"destination: padding at the left",    destination.x() - 311,      26},
        {"destination: symbol to texts",        across(symbol, caption),    10},
        {"destination: caption to path",        down(caption, path),        2},
        {"destination to reveal button",        across(destination, reveal), 12},
        {"reveal button to start button",       across(reveal, start),      12},
        // clang-format on
    });
}

TEST_F(GeometryTest, laysOutTheDropZone) {
    const QRect zone = box<DropZone>();
    const QRect badge = box("dropBadge");
    const QRect title = box("dropTitle");
    const QRect explanation = box("dropExplanation");
    const QRect audio = button("Choose Audio");
    const QRect folder = button("Choose Folder");
    const int above = badge.y() - zone.y();
    const int below = bottom(zone) - bottom(audio);
    const int left = audio.x() - zone.x();
    const int right = end(zone) - end(folder);
    const int aside = (badge.x() - zone.x()) - (end(zone) - end(badge));
    expectAll({
        // clang-format off
        {"badge: width",                        badge.width(),              112},
        {"badge: height",                       badge.height(),             112},
        {"badge to title",                      down(badge, title),         8 + 12},
        {"title to explanation",                down(title, explanation),   8 + 2},
        {"explanation to buttons",              down(explanation, audio),   8 + 12},
        {"Choose Audio to Choose Folder",       across(audio, folder),      8},
        {"centred down",                        std::abs(above - below) / 2, 0},
        {"buttons centred across",              std::abs(left - right) / 2, 0},
        {"badge centred across",                std::abs(aside) / 2,        0},
        // clang-format on
    });
}

TEST_F(GeometryTest, laysOutTheJobList) {
    const std::vector<JobRow*> rows = showRows();
    ASSERT_EQ(rows.size(), 4U);
    const QRect summary = box("summary");
    const QRect overall = box("overallProgress");
    const QRect area = box<JobScrollArea>();
    const QRect divider = box("footerDivider");
    const QRect failed = box(rows[0]);
    const QRect converting = box(rows[1]);
    expectAll({
        // clang-format off
        {"header to overall bar",               down(summary, overall),     20},
        {"overall bar: padding at the left",    overall.x() - 311,          26},
        {"overall bar: padding at the right",   960 - end(overall),         26},
        {"overall bar: height",                 overall.height(),           6},
        {"overall bar to list",                 down(overall, area),        0},
        {"list: x",                             area.x(),                   311},
        {"list: width",                         area.width(),               649},
        {"list to footer",                      down(area, divider),        0},
        {"list: padding at the top",            failed.y() - area.y(),      6},
        {"row to row",                          down(failed, converting),   0},
        // clang-format on
    });
}

TEST_F(GeometryTest, laysOutTheRowsOfTheList) {
    const std::vector<JobRow*> rows = showRows();
    ASSERT_EQ(rows.size(), 4U);
    const QRect message = part(rows[0], "message");
    const QRect converting = box(rows[1]);
    const QRect bar = part(rows[1], "progress");
    const QRect waiting = box(rows[2]);
    const QRect badge = part(rows[2], "badge");
    const QRect name = part(rows[2], "name");
    const QRect folder = part(rows[2], "folder");
    const QRect bullet = part(rows[2], "bullet");
    const QRect state = part(rows[2], "state");
    const QRect remove = part(rows[2], "removeButton");
    const int spread = (name.y() - waiting.y()) - (bottom(waiting) - bottom(state));
    expectAll({
        // clang-format off
        {"row: badge at the left",              badge.x() - 311,            26},
        {"row without more: height",            waiting.height(),           converting.height()},
        {"badge: width",                        badge.width(),              42},
        {"badge: height",                       badge.height(),             42},
        {"badge to texts",                      across(badge, name),        14},
        {"badge: middle",                       std::abs(badge.center().y() - waiting.center().y()) / 2, 0},
        {"remove button: middle",               std::abs(remove.center().y() - waiting.center().y()) / 2, 0},
        {"name to state line",                  down(name, state),          6},
        {"texts centred beside the badge",      std::abs(spread) / 2,       0},
        {"folder to bullet",                    across(folder, bullet),     8},
        {"bullet to state",                     across(bullet, state),      8},
        {"row: padding above the name",         part(rows[1], "name").y() - converting.y(), 7},
        {"state line to bar",                   down(part(rows[1], "state"), bar), 6},
        {"bar to texts, at the left",           bar.x() - name.x(),         0},
        {"bar: padding at the right",           960 - end(bar),             14 + 26},
        {"message to remove button",            across(message, part(rows[0], "removeButton")), 14 + 14 + 5},
        {"bar: height",                         bar.height(),               6},
        {"row: padding below the bar",          down(bar, waiting),         7},
        {"state line to message",               down(part(rows[0], "state"), message), 6},
        {"row: padding below the message",      down(message, converting),  7},
        // clang-format on
    });
}

TEST_F(GeometryTest, alignsCheckMarksAndRemoveButtons) {
    scenario_.add({"a.opus"});
    static_cast<void>(scenario_.convertAll());
    scenario_.add({"b.opus"});
    const std::vector<JobRow*> rows = view_.findChild<JobScrollArea*>()->rows();
    ASSERT_EQ(rows.size(), 2U);
    // Where the bar above the list ends.
    EXPECT_EQ(960 - end(box(rows[0])) + JobRow::overhang, 26);
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        view_.setLayoutDirection(direction);
        settle();
        for (const JobRow* row : rows) {
            EXPECT_EQ(blankAtTheEnd(*row), JobRow::overhang) << direction;
        }
    }
}

TEST_F(GeometryTest, keepsTheSidebarAtItsWidthInAWiderWindow) {
    view_.resize(1400, 900);
    settle();
    expectAll({
        {"sidebar: width", box<SettingsSidebar>().width(), 310},
        {"sidebar: height", box<SettingsSidebar>().height(), 900},
        {"queue: width", box<QueueView>().width(), 1400 - 311},
    });
}

TEST_F(GeometryTest, insetsContentsButNotBackgroundsAtTheTop) {
    view_.setTopInset(28);
    settle();
    expectAll({
        {"sidebar: y", box<SettingsSidebar>().y(), 0},
        {"sidebar: height", box<SettingsSidebar>().height(), 640},
        {"badge: y", box<AppBadge>().y(), 28 + 32},
        {"divider: y", box("sidebarDivider").y(), 0},
        {"divider: height", box("sidebarDivider").height(), 640},
        {"queue: y", box<QueueView>().y(), 28},
        {"title: y", box("queueTitle").y(), 28 + 27},
    });
}

TEST_F(GeometryTest, measuresTheFooterAgainAfterAFontChange) {
    const QFont original = QApplication::font();
    QFont large = original;
    large.setPointSizeF(original.pointSizeF() * 2);
    QApplication::setFont(large);
    QueueView queue(scenario_.model);
    queue.resize(649, 640);
    queue.show();
    EXPECT_TRUE(waitUntilShown(queue));
    QApplication::setFont(original);
    settle();
    const QRect divider = find<QWidget>(queue, "footerDivider")->geometry();
    const int start = find<QWidget>(queue, "startButton")->height();
    EXPECT_EQ(start, 36);
    EXPECT_EQ(640 - divider.y(), 1 + 14 + start + 22);
}

} // namespace
} // namespace kestrel
