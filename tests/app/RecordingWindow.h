#pragma once

#include "MainWindow.h"

#include <vector>

namespace kestrel {

/// The window, which writes down what it asks of the window system. It asks for sizes in earnest,
/// unless told otherwise: only a pointer on a real screen can move a window or its edge.
class RecordingWindow : public MainWindow {
  public:
    using MainWindow::MainWindow;

    /// Whether the window system is to hear what sizes it asks for. One that refuses them answers
    /// in its own time.
    bool isHeard = true;
    int moves = 0;
    std::vector<Qt::Edges> resizes;
    std::vector<QSize> sizes;

  protected:
    void startMove() override { ++moves; }

    void startResize(Qt::Edges edges) override { resizes.push_back(edges); }

    void askForSize(QSize size) override {
        sizes.push_back(size);
        if (isHeard) {
            MainWindow::askForSize(size);
        }
    }
};

} // namespace kestrel
