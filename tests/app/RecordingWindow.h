#pragma once

#include "MainWindow.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace kestrel {

/// Records the requests to the window system. Only size requests are forwarded, unless disabled: an
/// interactive move or resize needs a pointer on a real screen.
class RecordingWindow : public MainWindow {
  public:
    using MainWindow::MainWindow;

    /// Whether size requests are forwarded; false stands in for a window system that refuses them,
    /// whose answer takes its own time.
    bool forwardsSizes = true;
    /// Stands in for the screen's available size.
    std::optional<QSize> available;
    int moves = 0;
    std::vector<Qt::Edges> resizes;
    std::vector<QSize> sizes;
    bool hasRequestedDuringResize = false;

  protected:
    void resizeEvent(QResizeEvent* event) override {
        const std::size_t count = sizes.size();
        MainWindow::resizeEvent(event);
        hasRequestedDuringResize = hasRequestedDuringResize || sizes.size() != count;
    }

    QSize availableSize() const override { return available.value_or(MainWindow::availableSize()); }

    void startMove() override { ++moves; }

    void startResize(Qt::Edges edges) override { resizes.push_back(edges); }

    void requestSize(QSize size) override {
        sizes.push_back(size);
        if (forwardsSizes) {
            MainWindow::requestSize(size);
        }
    }
};

} // namespace kestrel
