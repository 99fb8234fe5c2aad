#include "WaylandWindowExport.h"

#include "FakeCompositor.h"
#include "ProcessCounts.h"
#include "RunUntil.h"

#include <gmock/gmock.h>
#include <wayland-client.h>

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

/// Longer than any test may take.
constexpr auto never = std::chrono::milliseconds(1h);

class WaylandWindowExportTest : public testing::Test {
  protected:
    /// Exports the surface of a client of such a compositor.
    void exportSurface(FakeCompositor::Options options, std::chrono::milliseconds timeout = never) {
        export_.reset();
        compositor_.emplace(options);
        exportAgain(timeout);
    }

    void exportAgain(std::chrono::milliseconds timeout = never) {
        handles_.clear();
        export_ = std::make_unique<WaylandWindowExport>(
            compositor_->connection(), [this] { return surface_.value_or(compositor_->surface()); },
            timeout, [this](const QString& handle) { handles_.push_back(handle); });
    }

    bool waitForHandle() {
        return runUntil([this] { return !handles_.empty(); });
    }

    /// Returned for the surface if set.
    std::optional<wl_surface*> surface_;
    std::vector<QString> handles_;
    std::optional<FakeCompositor> compositor_;
    std::unique_ptr<WaylandWindowExport> export_;
};

TEST_F(WaylandWindowExportTest, passesOnTheHandleFromTheEventLoop) {
    exportSurface({.hasV2 = true});
    EXPECT_THAT(handles_, IsEmpty());
    ASSERT_TRUE(waitForHandle());
    EXPECT_THAT(handles_, ElementsAre(FakeCompositor::handle()));
    EXPECT_THAT(compositor_->exports(), ElementsAre(QStringLiteral("zxdg_exported_v2")));
}

TEST_F(WaylandWindowExportTest, usesVersion1WithoutVersion2) {
    exportSurface({.hasV1 = true});
    ASSERT_TRUE(waitForHandle());
    EXPECT_THAT(handles_, ElementsAre(FakeCompositor::handle()));
    EXPECT_THAT(compositor_->exports(), ElementsAre(QStringLiteral("zxdg_exported_v1")));
}

TEST_F(WaylandWindowExportTest, prefersVersion2) {
    exportSurface({.hasV1 = true, .hasV2 = true});
    ASSERT_TRUE(waitForHandle());
    EXPECT_THAT(compositor_->exports(), ElementsAre(QStringLiteral("zxdg_exported_v2")));
}

TEST_F(WaylandWindowExportTest, hasNoHandleIfTheCompositorCannotExport) {
    exportSurface({});
    ASSERT_TRUE(waitForHandle());
    EXPECT_THAT(handles_, ElementsAre(QString()));
}

TEST_F(WaylandWindowExportTest, hasNoHandleIfTheSurfaceIsGone) {
    surface_ = nullptr;
    exportSurface({.hasV1 = true, .hasV2 = true});
    ASSERT_TRUE(waitForHandle());
    EXPECT_THAT(handles_, ElementsAre(QString()));
    EXPECT_THAT(compositor_->exports(), IsEmpty());
    EXPECT_EQ(::wl_display_get_error(compositor_->connection()), 0);
}

TEST_F(WaylandWindowExportTest, hasNoHandleIfTheCompositorDoesNotAnswerInTime) {
    exportSurface({.hasV2 = true, .isAnswering = false}, 500ms);
    ASSERT_TRUE(runUntil([&] { return !compositor_->exports().empty(); }));
    ASSERT_TRUE(waitForHandle());
    EXPECT_THAT(handles_, ElementsAre(QString()));
    // A late answer changes nothing.
    compositor_->answer();
    export_.reset();
    EXPECT_TRUE(runUntil([&] { return compositor_->liveExports() == 0; }));
    EXPECT_THAT(handles_, ElementsAre(QString()));
}

TEST_F(WaylandWindowExportTest, passesOnTheFirstOfTwoHandles) {
    exportSurface({.hasV2 = true, .isAnswering = false});
    ASSERT_TRUE(runUntil([&] { return !compositor_->exports().empty(); }));
    // Both are dispatched at once.
    compositor_->answer();
    compositor_->answer();
    ASSERT_TRUE(waitForHandle());
    EXPECT_THAT(handles_, ElementsAre(FakeCompositor::handle()));
}

TEST_F(WaylandWindowExportTest, hasNoHandleIfTheConnectionBreaks) {
    exportSurface({.hasV2 = true, .isAnswering = false});
    ASSERT_TRUE(runUntil([&] { return !compositor_->exports().empty(); }));
    compositor_->disconnectClient();
    ASSERT_TRUE(waitForHandle());
    EXPECT_THAT(handles_, ElementsAre(QString()));
}

TEST_F(WaylandWindowExportTest, endsTheExportWithItsLife) {
    for (const bool hasV2 : {false, true}) {
        exportSurface({.hasV1 = true, .hasV2 = hasV2});
        ASSERT_TRUE(waitForHandle());
        EXPECT_EQ(compositor_->liveExports(), 1);
        export_.reset();
        EXPECT_TRUE(runUntil([&] { return compositor_->liveExports() == 0; }));
    }
}

TEST_F(WaylandWindowExportTest, mayEndBeforeTheAnswer) {
    exportSurface({.hasV2 = true, .isAnswering = false});
    ASSERT_TRUE(runUntil([&] { return compositor_->liveExports() == 1; }));
    export_.reset();
    EXPECT_TRUE(runUntil([&] { return compositor_->liveExports() == 0; }));
    EXPECT_THAT(handles_, IsEmpty());
}

TEST_F(WaylandWindowExportTest, leavesTheDefaultQueueToItsOwner) {
    compositor_.emplace(FakeCompositor::Options{.hasV2 = true});
    bool isDone = false;
    wl_callback* callback = ::wl_display_sync(compositor_->connection());
    static constexpr wl_callback_listener listener = {
        .done = [](void* data, wl_callback*, std::uint32_t) { *static_cast<bool*>(data) = true; }};
    ::wl_callback_add_listener(callback, &listener, &isDone);
    exportAgain();
    ASSERT_TRUE(waitForHandle());
    EXPECT_FALSE(isDone);
    // Its event was there before the handle.
    ::wl_display_dispatch_pending(compositor_->connection());
    EXPECT_TRUE(isDone);
    ::wl_callback_destroy(callback);
}

TEST_F(WaylandWindowExportTest, leavesNoDescriptorOpen) {
    exportSurface({.hasV2 = true});
    ASSERT_TRUE(waitForHandle());
    export_.reset();
    const std::size_t before = ProcessCounts::now().descriptors;
    for (int i = 0; i < 5; ++i) {
        exportAgain();
        ASSERT_TRUE(waitForHandle());
    }
    EXPECT_EQ(ProcessCounts::now().descriptors, before);
}

} // namespace
} // namespace kestrel::test
