#pragma once

class QString;

namespace kestrel {

/// Returns the text between a first strong isolate and its end, so that directional characters in
/// it do not reorder the text around it. Isolates in the text are balanced. Thread-safe.
QString bidiIsolated(const QString& text);

} // namespace kestrel
