#pragma once

#include "MainWindow.h"

#include <vector>

namespace kestrel {

/// The window, which writes down what it asks of the window system. It asks for sizes in earnest:
/// only a pointer on a real screen can move a window or its edge.
class RecordingWindow : public MainWindow {
  public:
    using MainWindow::MainWindow;

    int moves = 0;
    std::vector<Qt::Edges> resizes;
    std::vector<QSize> sizes;

  protected:
    void startMove() override { ++moves; }

    void startResize(Qt::Edges edges) override { resizes.push_back(edges); }

    void askForSize(QSize size) override {
        sizes.push_back(size);
        MainWindow::askForSize(size);
    }
};

} // namespace kestrel
