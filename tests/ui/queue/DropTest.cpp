#include "ContentView.h"
#include "DropZone.h"
#include "FFmpegService.h"
#include "JobList.h"
#include "JobRow.h"
#include "RunUntil.h"
#include "Scenario.h"
#include "Timeout.h"

#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMimeData>

#include <gtest/gtest.h>

#include <cstddef>

namespace kestrel {
namespace {

class DropTest : public ::testing::Test {
  public:
    DropTest(const DropTest&) = delete;
    DropTest& operator=(const DropTest&) = delete;

  protected:
    DropTest() : view_(scenario_.model, FFmpegService::locateBinary) {
        view_.resize(960, 640);
        view_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view_, test::timeout));
        setUris("file:///no-such-folder/a.opus\r\n");
    }

    // Qt keeps the target of a drag that does not end, also after the target's destruction.
    ~DropTest() override { leave(zone()); }

    void setUris(const char* uris) {
        mime_.clear();
        mime_.setData(QStringLiteral("text/uri-list"), uris);
    }

    bool enter(QWidget* widget) {
        QDragEnterEvent event(widget->rect().center(), Qt::CopyAction | Qt::MoveAction, &mime_,
                              Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(widget, &event);
        settle();
        return event.isAccepted();
    }

    bool move(QWidget* widget) {
        QDragMoveEvent event(widget->rect().topLeft(), Qt::CopyAction | Qt::MoveAction, &mime_,
                             Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(widget, &event);
        return event.isAccepted();
    }

    static void leave(QWidget* widget) {
        QDragLeaveEvent event;
        QCoreApplication::sendEvent(widget, &event);
        settle();
    }

    bool drop(QWidget* widget) {
        QDropEvent event(widget->rect().center(), Qt::CopyAction | Qt::MoveAction, &mime_,
                         Qt::LeftButton, Qt::NoModifier);
        event.setDropAction(Qt::MoveAction);
        event.ignore();
        QCoreApplication::sendEvent(widget, &event);
        EXPECT_TRUE(!event.isAccepted() || event.dropAction() == Qt::CopyAction);
        settle();
        return event.isAccepted();
    }

    bool waitForJobs(std::size_t count) const {
        return test::runUntil([this, count] { return scenario_.model->jobs().size() == count; });
    }

    bool isTargeted() const { return scenario_.model->isDropTargeted(); }

    QWidget* zone() const { return view_.findChild<DropZone*>(); }

    QWidget* list() const { return view_.findChild<JobList*>(); }

    Scenario scenario_;
    QMimeData mime_;
    ContentView view_;
};

TEST_F(DropTest, targetsTheZoneBetweenEnterAndLeave) {
    EXPECT_TRUE(enter(zone()));
    EXPECT_TRUE(isTargeted());
    EXPECT_TRUE(move(zone()));
    leave(zone());
    EXPECT_FALSE(isTargeted());
    EXPECT_TRUE(scenario_.model->jobs().empty());
}

TEST_F(DropTest, acceptsADropOnTheZone) {
    enter(zone());
    EXPECT_TRUE(drop(zone()));
    EXPECT_FALSE(isTargeted());
    ASSERT_TRUE(waitForJobs(1));
    EXPECT_EQ(scenario_.model->jobs()[0].source().path(), "/no-such-folder/a.opus");
}

TEST_F(DropTest, acceptsADropOnARowOfTheList) {
    scenario_.add({"z.opus"});
    ASSERT_FALSE(zone()->isVisible());
    QWidget* row = list()->findChild<JobRow*>();
    EXPECT_TRUE(enter(row));
    EXPECT_TRUE(isTargeted());
    EXPECT_TRUE(drop(row));
    EXPECT_FALSE(isTargeted());
    EXPECT_TRUE(waitForJobs(2));
}

TEST_F(DropTest, targetsTheListBetweenEnterAndLeave) {
    scenario_.add({"z.opus"});
    EXPECT_TRUE(enter(list()));
    EXPECT_TRUE(isTargeted());
    leave(list());
    EXPECT_FALSE(isTargeted());
}

TEST_F(DropTest, keepsTheBytesOfEveryDroppedPath) {
    setUris("file:///no-such-folder/caf%E9.opus\r\nhttp://host/x.opus\r\n"
            "file:///no-such-folder/%23%3F%25.ogg\r\n");
    enter(zone());
    EXPECT_TRUE(drop(zone()));
    ASSERT_TRUE(waitForJobs(2));
    EXPECT_EQ(scenario_.model->jobs()[0].source().path(), "/no-such-folder/caf\xE9.opus");
    EXPECT_EQ(scenario_.model->jobs()[1].source().path(), "/no-such-folder/#?%.ogg");
}

TEST_F(DropTest, refusesDragsWithoutAFile) {
    for (const char* uri : {"http://host/x.opus\r\n", "trash:///x.opus\r\n",
                            "file://other-host/x.opus\r\n", "file:\r\n"}) {
        setUris(uri);
        EXPECT_FALSE(enter(zone())) << uri;
        EXPECT_FALSE(isTargeted()) << uri;
        EXPECT_FALSE(drop(zone())) << uri;
    }
    mime_.clear();
    mime_.setText(QStringLiteral("/no-such-folder/a.opus"));
    EXPECT_FALSE(enter(zone()));
    EXPECT_FALSE(isTargeted());
    scenario_.add({"z.opus"});
    EXPECT_FALSE(enter(list()));
    setUris("trash:///x.opus\r\n");
    EXPECT_FALSE(enter(list()));
    setUris("file://other-host/x.opus\r\n");
    EXPECT_FALSE(enter(list()));
    EXPECT_FALSE(isTargeted());
    setUris("trash:///x.opus\r\nfile:///no-such-folder/a.opus\r\n");
    EXPECT_TRUE(enter(list()));
}

TEST_F(DropTest, endsTheDragOverTheZoneWhenTheListReplacesIt) {
    enter(zone());
    ASSERT_TRUE(isTargeted());
    scenario_.add({"z.opus"});
    ASSERT_FALSE(zone()->isVisible());
    EXPECT_FALSE(isTargeted());
}

TEST_F(DropTest, outlinesTheZoneWhileItIsTargeted) {
    const QImage before = zone()->grab().toImage();
    enter(zone());
    EXPECT_NE(zone()->grab().toImage(), before);
    leave(zone());
    EXPECT_EQ(zone()->grab().toImage(), before);
}

} // namespace
} // namespace kestrel
