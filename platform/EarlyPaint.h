#pragma once

class QWidget;

namespace kestrel {

/// On X11, paints a window that has been shown but is not exposed yet, which takes as long as the
/// window manager needs to map it; Qt then only flushes the frame. Elsewhere does nothing. Called
/// on the main thread.
void paintBeforeExposure(QWidget& window);

} // namespace kestrel
