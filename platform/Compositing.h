#pragma once

namespace kestrel {

/// Returns true iff translucent windows are blended with what is behind them: always on Wayland, on
/// X11 while a compositing manager runs. Called on the main thread, with a QGuiApplication.
bool isCompositing();

} // namespace kestrel
